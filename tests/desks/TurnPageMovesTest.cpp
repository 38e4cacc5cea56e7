// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/BarWindow.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;

/// How the user moves from page to page.
class TurnPageMovesTest : public QObject, private BarWindow {
    Q_OBJECT

private Q_SLOTS:

    void init() { open(); }

    void cleanup() { close(); }

    void firstPage();
    void firstPageWritesTheTotalAgainAfterTheSignal();
    void previousPage();
    void nextPage();
    void lastPage();
    void lastPageSetsTheRowCountFromTheRowsHeld();
    void atAnEndOnlyTheFieldIsRewritten();
    void anotherPageIsReachedByTypingItsNumber();
    void theNumberIsTypedWithTheKeypadToo();
    void aNumberOutOfRangeIsRefused_data();
    void aNumberOutOfRangeIsRefused();
    void onlyEnterOnAClearedFieldIsKeptFromTheWindow();
    void thePresentPageIsNoJump();
    void leavingTheFieldIsSilent_data();
    void leavingTheFieldIsSilent();
    void aSlotCalledWithoutFocusDoesNothing();
};

namespace {

/// Counts the keys that reach a widget.
class KeyCounter : public QObject {
public:
    explicit KeyCounter(QWidget *widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            ++pressed;
        return false;
    }

    int pressed = 0;
};

} // namespace

void TurnPageMovesTest::firstPage()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    click("m_pFirstPagePB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(currentPage(), 1);
    QCOMPARE(field()->text(), QStringLiteral("1"));
    field()->setText(QStringLiteral("77"));
    click("m_pFirstPagePB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(field()->text(), QStringLiteral("77"));
}

void TurnPageMovesTest::firstPageWritesTheTotalAgainAfterTheSignal()
{
    showPage(3);
    QString fieldThen;
    connect(m_bar, &Bar::currentPageChanged, this, [&] {
        fieldThen = field()->text();
        find<QLabel>("m_pTotalLabel")->setText(QStringLiteral("overwritten"));
    });
    click("m_pFirstPagePB");
    QCOMPARE(fieldThen, QStringLiteral("1"));
    QCOMPARE(total(), QStringLiteral("/ 5"));
}

void TurnPageMovesTest::previousPage()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    click("m_pPageUpPB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(currentPage(), 2);
    QCOMPARE(field()->text(), QStringLiteral("2"));
    click("m_pPageUpPB");
    click("m_pPageUpPB");
    QCOMPARE(changed.count(), 2);
    QCOMPARE(currentPage(), 1);
}

void TurnPageMovesTest::nextPage()
{
    showPage(4);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    click("m_pPageDownPB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(currentPage(), 5);
    QCOMPARE(field()->text(), QStringLiteral("5"));
    click("m_pPageDownPB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(currentPage(), 5);
}

void TurnPageMovesTest::lastPage()
{
    showPage(2);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    click("m_pLastPagePB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(currentPage(), 5);
    QCOMPARE(field()->text(), QStringLiteral("5"));
    field()->setText(QStringLiteral("77"));
    click("m_pLastPagePB");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(field()->text(), QStringLiteral("77"));
}

void TurnPageMovesTest::lastPageSetsTheRowCountFromTheRowsHeld()
{
    // 70 rows held, 3 pages: 70 - 30 * 3 + 30 rows while the signal is out.
    m_bar->setData(someRows(70), 90, QString());
    int rowsThen = -1;
    int pageThen = -1;
    const auto connection = connect(m_bar, &Bar::currentPageChanged, this, [&] {
        rowsThen = m_table->rowCount();
        pageThen = currentPage();
    });
    click("m_pLastPagePB");
    QCOMPARE(rowsThen, 10);
    QCOMPARE(pageThen, 3);
    disconnect(connection);

    // As desks use it, 30 rows held, the count is negative and the table ignores it.
    showPage(1);
    click("m_pLastPagePB");
    QCOMPARE(m_table->rowCount(), 30);
}

void TurnPageMovesTest::atAnEndOnlyTheFieldIsRewritten()
{
    showPage(1);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    field()->setText(QStringLiteral("77"));
    click("m_pPageUpPB");
    QCOMPARE(field()->text(), QStringLiteral("1"));
    showPage(5);
    const int before = changed.count();
    field()->setText(QStringLiteral("77"));
    click("m_pPageDownPB");
    QCOMPARE(field()->text(), QStringLiteral("5"));
    QCOMPARE(changed.count(), before);
}

void TurnPageMovesTest::anotherPageIsReachedByTypingItsNumber()
{
    m_bar->setData(someRows(30), 150, QString());
    MessageBoxProbe probe;
    int emitted = 0;
    bool focusThen = false;
    connect(m_bar, &Bar::currentPageChanged, this, [&] {
        ++emitted;
        focusThen = field()->hasFocus();
    });
    type(QStringLiteral("004"));
    QCOMPARE(emitted, 1);
    QCOMPARE(currentPage(), 4);
    QVERIFY(focusThen);
    QVERIFY(!field()->hasFocus());
    QCOMPARE(probe.count(), 0);
}

void TurnPageMovesTest::theNumberIsTypedWithTheKeypadToo()
{
    m_bar->setData(someRows(30), 150, QString());
    type(QStringLiteral("2"), Qt::Key_Enter);
    QCOMPARE(currentPage(), 2);
}

void TurnPageMovesTest::aNumberOutOfRangeIsRefused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::newRow("zero") << "0" << int(Qt::Key_Return);
    QTest::newRow("one page too many") << "6" << int(Qt::Key_Return);
    QTest::newRow("more than an int holds") << "99999999999999999999" << int(Qt::Key_Return);
    QTest::newRow("cleared, Return") << "" << int(Qt::Key_Return);
    QTest::newRow("cleared, Enter of the keypad") << "" << int(Qt::Key_Enter);
}

void TurnPageMovesTest::aNumberOutOfRangeIsRefused()
{
    QFETCH(QString, typed);
    QFETCH(int, key);
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    MessageBoxProbe probe;
    type(typed, static_cast<Qt::Key>(key));
    QCOMPARE(probe.count(), 1);
    const auto box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("错误"));
    QCOMPARE(box.text, QStringLiteral("跳转页码不可小于1或者超过总页数！"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_bar));
    QCOMPARE(field()->text(), QStringLiteral("3"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(currentPage(), 3);
}

/// A window may have a default button of its own, which Enter presses.
void TurnPageMovesTest::onlyEnterOnAClearedFieldIsKeptFromTheWindow()
{
    showPage(3);
    const MessageBoxProbe probe;
    const KeyCounter window(m_window);
    type(QString(), Qt::Key_Return);
    QApplication::setActiveWindow(m_window);
    type(QString(), Qt::Key_Enter);
    QApplication::setActiveWindow(m_window);
    QCOMPARE(probe.count(), 2);
    QCOMPARE(window.pressed, 0);
    type(QStringLiteral("3"), Qt::Key_Return);
    QCOMPARE(window.pressed, 1);
    type(QString(), Qt::Key_Escape);
    QCOMPARE(probe.count(), 2);
    QCOMPARE(window.pressed, 2);
    QCOMPARE(field()->text(), QString());
}

void TurnPageMovesTest::thePresentPageIsNoJump()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    MessageBoxProbe probe;
    type(QStringLiteral("3"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(probe.count(), 0);
    QVERIFY(field()->hasFocus());
}

void TurnPageMovesTest::leavingTheFieldIsSilent_data()
{
    QTest::addColumn<QString>("left");
    QTest::newRow("another page") << "4";
    QTest::newRow("out of range") << "99";
    QTest::newRow("cleared") << "";
}

void TurnPageMovesTest::leavingTheFieldIsSilent()
{
    QFETCH(QString, left);
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    MessageBoxProbe probe;
    field()->setFocus();
    field()->selectAll();
    QTest::keyClick(field(), Qt::Key_Delete);
    QTest::keyClicks(field(), left);
    m_other->setFocus();
    QVERIFY(!field()->hasFocus());
    QCOMPARE(probe.count(), 0);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(currentPage(), 3);
    QCOMPARE(field()->text(), left);
}

void TurnPageMovesTest::aSlotCalledWithoutFocusDoesNothing()
{
    showPage(3);
    MessageBoxProbe probe;
    m_other->setFocus();
    field()->setText(QStringLiteral("99"));
    m_bar->on_m_pGotoPageLE_editingFinished();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(field()->text(), QStringLiteral("99"));
}

KODMS_TEST_MAIN(TurnPageMovesTest, QApplication)
#include "TurnPageMovesTest.moc"
