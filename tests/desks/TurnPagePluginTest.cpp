// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/DMS_TurnPage_Plugin.h"

#include "tests/desks/ConditionLines.h"
#include "tests/desks/LayoutLines.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <stdexcept>

using namespace KODMS::UI;
using KODMS::DataLib::Model::DB_Search;
using KODMS::Fakes::MessageBoxProbe;
using KODMS::Tests::allFields;
using KODMS::Tests::Expected;
using KODMS::Tests::layoutLines;

using Rows = QList<QList<QString>>;
using Bar = DMS_TurnPage_Plugin<Rows, QTableWidget *>;

namespace {

Rows someRows(int count)
{
    Rows rows;
    for (int row = 0; row < count; ++row)
        rows.append({QStringLiteral("id%1").arg(row), QStringLiteral("name%1").arg(row)});
    return rows;
}

} // namespace

/// A window with a table of two columns and the bar under it.
class TurnPagePluginTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theBarReadsFromLeftToRight();
    void thePageFieldTakesOnlyDigits();
    void thePageSlotsAreThoseOfTheBase();
    void theBarStartsOnPageOne();
    void theNumberOfPagesFollowsTheCount_data();
    void theNumberOfPagesFollowsTheCount();
    void noRowsInAllPagesLeaveTheTableAsItIs();
    void fillingPutsEveryCellInPlace();
    void fillingAgainReplacesTheRows();
    void aCellIsSplitAtItsBars_data();
    void aCellIsSplitAtItsBars();
    void theRowOfTheSelectKeyIsSelected_data();
    void theRowOfTheSelectKeyIsSelected();
    void theHeldRowsAreACopy();
    void thePageWindowGoesIntoTheLastCondition();
    void aRestartGoesBackToPageOne();
    void anEmptyConditionListIsOutOfRange();
    void clampingMovesOnlyBackwards_data();
    void clampingMovesOnlyBackwards();
    void clampingToNoRowsMovesToPageZero();
    void clampingTouchesNeitherFieldNorSignal();
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
    void thePresentPageIsNoJump();
    void leavingTheFieldIsSilent_data();
    void leavingTheFieldIsSilent();
    void aSlotCalledWithoutFocusDoesNothing();
    void theTableIsNotOwned();

private:
    template <typename Control> Control *find(const char *name) const
    {
        return m_bar->findChild<Control *>(QLatin1String(name));
    }

    QPushButton *button(const char *name) const { return find<QPushButton>(name); }

    QLineEdit *field() const { return find<QLineEdit>("m_pGotoPageLE"); }

    QString total() const { return find<QLabel>("m_pTotalLabel")->text(); }

    /// The page that the bar would ask for.
    int currentPage()
    {
        std::vector<DB_Search> list(1);
        m_bar->setSearchPage(list, false);
        return std::stoi(list.front().pageStart) / 30 + 1;
    }

    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    void type(const QString &text, Qt::Key end = Qt::Key_Return);

    /// Five pages of 30 rows, page `page` shown.
    void showPage(int page);

    QWidget *m_window = nullptr;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_other = nullptr;
    Bar *m_bar = nullptr;
};

void TurnPagePluginTest::init()
{
    m_window = new QWidget;
    auto *layout = new QVBoxLayout(m_window);
    m_table = new QTableWidget(0, 2, m_window);
    m_other = new QLineEdit(m_window);
    m_bar = new Bar(Rows(), m_table, m_window);
    layout->addWidget(m_table);
    layout->addWidget(m_other);
    layout->addWidget(m_bar);
    m_window->show();
    QApplication::setActiveWindow(m_window);
}

void TurnPagePluginTest::cleanup()
{
    delete m_window;
}

void TurnPagePluginTest::type(const QString &text, Qt::Key end)
{
    field()->setFocus();
    field()->selectAll();
    if (text.isEmpty())
        QTest::keyClick(field(), Qt::Key_Delete);
    QTest::keyClicks(field(), text);
    QTest::keyClick(field(), end);
}

void TurnPagePluginTest::showPage(int page)
{
    m_bar->setData(someRows(30), 150, QString());
    if (page == 1)
        return;
    type(QString::number(page));
    m_bar->setData(someRows(30), 150, QString());
}

void TurnPagePluginTest::theBarReadsFromLeftToRight()
{
    QCOMPARE(
        layoutLines(m_bar->layout()),
        QStringList({QStringLiteral("QHBoxLayout"), QStringLiteral(" spacer 3x1 Expanding Minimum"),
                     QStringLiteral(" m_pFirstPagePB"), QStringLiteral(" m_pPageUpPB"),
                     QStringLiteral(" m_pGotoPageLE"), QStringLiteral(" m_pTotalLabel"),
                     QStringLiteral(" m_pPageDownPB"), QStringLiteral(" m_pLastPagePB"),
                     QStringLiteral(" spacer 3x1 Expanding Minimum")}));
    QCOMPARE(button("m_pFirstPagePB")->text(), QStringLiteral("第一页"));
    QCOMPARE(button("m_pPageUpPB")->text(), QStringLiteral("上一页"));
    QCOMPARE(button("m_pPageDownPB")->text(), QStringLiteral("下一页"));
    QCOMPARE(button("m_pLastPagePB")->text(), QStringLiteral("最后一页"));
    QStringList created;
    const auto controls = m_bar->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *control : controls)
        created << control->objectName();
    QCOMPARE(created,
             QStringList({QStringLiteral("m_pFirstPagePB"), QStringLiteral("m_pPageUpPB"),
                          QStringLiteral("m_pGotoPageLE"), QStringLiteral("m_pTotalLabel"),
                          QStringLiteral("m_pPageDownPB"), QStringLiteral("m_pLastPagePB")}));
}

void TurnPagePluginTest::thePageFieldTakesOnlyDigits()
{
    QCOMPARE(field()->maximumWidth(), 50);
    const auto *validator = qobject_cast<const QRegExpValidator *>(field()->validator());
    QVERIFY(validator);
    QCOMPARE(validator->regExp().pattern(), QStringLiteral("[0-9]{1,20}$"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
    m_bar->setData(someRows(30), 150, QString());
    field()->clear();
    field()->setFocus();
    QTest::keyClicks(field(), QStringLiteral("-1a2 .3"));
    QCOMPARE(field()->text(), QStringLiteral("123"));
    QTest::keyClicks(field(), QStringLiteral("456789012345678901234567890"));
    QCOMPARE(field()->text().size(), 20);
}

void TurnPagePluginTest::thePageSlotsAreThoseOfTheBase()
{
    const QMetaObject &meta = Temp_Widget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods << QString::fromLatin1(meta.method(index).methodSignature());
    QCOMPARE(methods, QStringList({QStringLiteral("currentPageChanged()"),
                                   QStringLiteral("on_m_pFirstPagePB_clicked()"),
                                   QStringLiteral("on_m_pPageUpPB_clicked()"),
                                   QStringLiteral("on_m_pPageDownPB_clicked()"),
                                   QStringLiteral("on_m_pLastPagePB_clicked()"),
                                   QStringLiteral("on_m_pGotoPageLE_editingFinished()")}));
    QCOMPARE(m_bar->metaObject(), &meta);
}

void TurnPagePluginTest::theBarStartsOnPageOne()
{
    QCOMPARE(field()->text(), QStringLiteral("1"));
    QCOMPARE(currentPage(), 1);
    QCOMPARE(m_bar->parentWidget(), m_window);
}

void TurnPagePluginTest::theNumberOfPagesFollowsTheCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("shown");
    QTest::newRow("nothing found") << 0 << QStringLiteral("/ 0") << false;
    QTest::newRow("one row") << 1 << QStringLiteral("/ 1") << false;
    QTest::newRow("29 rows") << 29 << QStringLiteral("/ 1") << false;
    QTest::newRow("30 rows, one full page") << 30 << QStringLiteral("/ 1") << false;
    QTest::newRow("31 rows") << 31 << QStringLiteral("/ 2") << true;
    QTest::newRow("60 rows, two full pages") << 60 << QStringLiteral("/ 2") << true;
    QTest::newRow("61 rows") << 61 << QStringLiteral("/ 3") << true;
    QTest::newRow("a million rows") << 1000000 << QStringLiteral("/ 33334") << true;
}

void TurnPagePluginTest::theNumberOfPagesFollowsTheCount()
{
    QFETCH(int, count);
    m_bar->setData(someRows(qMin(count, 30)), count, QString());
    QTEST(total(), "label");
    QTEST(m_bar->isVisible(), "shown");
    QCOMPARE(field()->text(), QStringLiteral("1"));
}

void TurnPagePluginTest::noRowsInAllPagesLeaveTheTableAsItIs()
{
    m_bar->setData(someRows(3), 31, QString());
    m_bar->setData(Rows(), 0, QString());
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(m_table->item(2, 1)->text(), QStringLiteral("name2"));
    QVERIFY(!m_bar->isVisible());
    QCOMPARE(total(), QStringLiteral("/ 0"));
}

void TurnPagePluginTest::fillingPutsEveryCellInPlace()
{
    m_bar->setData(someRows(30), 30, QString());
    QCOMPARE(m_table->rowCount(), 30);
    for (int row = 0; row < 30; ++row) {
        QCOMPARE(m_table->item(row, 0)->text(), QStringLiteral("id%1").arg(row));
        QCOMPARE(m_table->item(row, 1)->text(), QStringLiteral("name%1").arg(row));
    }
    QVERIFY(m_table->selectedItems().isEmpty());
}

void TurnPagePluginTest::fillingAgainReplacesTheRows()
{
    m_bar->setData(someRows(30), 31, QString());
    m_bar->setData({{QStringLiteral("x"), QStringLiteral("y|r")}}, 1, QString());
    QCOMPARE(m_table->rowCount(), 1);
    QCOMPARE(m_table->item(0, 0)->text(), QStringLiteral("x"));
    QCOMPARE(m_table->item(0, 1)->text(), QStringLiteral("y"));
}

void TurnPagePluginTest::aCellIsSplitAtItsBars_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QBrush>("colour");
    const QBrush red(QColor(Qt::red));
    const QBrush none;
    QTest::newRow("text and code") << "abc|r"
                                   << "abc" << red;
    QTest::newRow("text alone") << "abc"
                                << "abc" << none;
    QTest::newRow("ends in a bar") << "abc|"
                                   << "abc" << none;
    QTest::newRow("two bars use the second piece") << "abc|r|dg"
                                                   << "abc" << red;
    QTest::newRow("empty text, code") << "|r"
                                      << "" << red;
    QTest::newRow("empty second piece, third ignored") << "abc||r"
                                                       << "abc" << none;
    QTest::newRow("code in capitals") << "abc|R"
                                      << "abc" << none;
    QTest::newRow("nothing at all") << ""
                                    << "" << none;
}

void TurnPagePluginTest::aCellIsSplitAtItsBars()
{
    QFETCH(QString, cell);
    m_bar->setData({{cell}}, 1, QString());
    QTEST(m_table->item(0, 0)->text(), "text");
    QTEST(m_table->item(0, 0)->foreground(), "colour");
}

void TurnPagePluginTest::theRowOfTheSelectKeyIsSelected_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("row"); // -1: none
    QTest::newRow("key in the first column") << "id1" << 1;
    QTest::newRow("key in another column") << "name2" << 2;
    QTest::newRow("coloured cell, by its text") << "done" << 3;
    QTest::newRow("whole cell string is no key") << "done|dg" << -1;
    QTest::newRow("part of a text is no key") << "id" << -1;
    QTest::newRow("empty key selects no empty cell") << "" << -1;
    QTest::newRow("unknown key") << "id9" << -1;
}

void TurnPagePluginTest::theRowOfTheSelectKeyIsSelected()
{
    QFETCH(QString, key);
    QFETCH(int, row);
    Rows rows = someRows(3);
    rows.append({QString(), QStringLiteral("done|dg")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_bar->setData(rows, 4, key);
    QList<int> selected;
    const auto indexes = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &index : indexes)
        selected << index.row();
    QCOMPARE(selected, row == -1 ? QList<int>() : QList<int>({row}));
}

void TurnPagePluginTest::theHeldRowsAreACopy()
{
    Rows rows = someRows(2);
    m_bar->setData(rows, 2, QString());
    rows.clear();
    QCOMPARE(m_table->rowCount(), 2);
}

void TurnPagePluginTest::thePageWindowGoesIntoTheLastCondition()
{
    showPage(3);
    std::vector<DB_Search> list{Expected("A", "1"), Expected("B", "2").fuzzy().sorted("T")};
    m_bar->setSearchPage(list, false);
    QCOMPARE(allFields(list),
             allFields({Expected("A", "1"), Expected("B", "2").fuzzy().sorted("T").page("60")}));
    QCOMPARE(field()->text(), QStringLiteral("3"));
}

void TurnPagePluginTest::aRestartGoesBackToPageOne()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    std::vector<DB_Search> list{Expected("A", "1")};
    m_bar->setSearchPage(list, true);
    QCOMPARE(allFields(list), allFields({Expected("A", "1").page("0")}));
    QCOMPARE(field()->text(), QStringLiteral("1"));
    QCOMPARE(currentPage(), 1);
    QCOMPARE(changed.count(), 0);
}

void TurnPagePluginTest::anEmptyConditionListIsOutOfRange()
{
    std::vector<DB_Search> list;
    QVERIFY_EXCEPTION_THROWN(m_bar->setSearchPage(list, false), std::out_of_range);
    QVERIFY_EXCEPTION_THROWN(m_bar->setSearchPage(list, true), std::out_of_range);
}

void TurnPagePluginTest::clampingMovesOnlyBackwards_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<int>("page");
    QTest::newRow("still five pages") << 150 << false << 5;
    QTest::newRow("one row on page five") << 121 << false << 5;
    QTest::newRow("exactly four pages") << 120 << true << 4;
    QTest::newRow("two pages") << 31 << true << 2;
    QTest::newRow("one page") << 30 << true << 1;
    QTest::newRow("more pages than before") << 1000 << false << 5;
}

void TurnPagePluginTest::clampingMovesOnlyBackwards()
{
    QFETCH(int, count);
    showPage(5);
    QTEST(m_bar->clampPage(count), "moved");
    QTEST(currentPage(), "page");
}

void TurnPagePluginTest::clampingToNoRowsMovesToPageZero()
{
    m_bar->setData(someRows(30), 150, QString());
    QVERIFY(m_bar->clampPage(0));
    std::vector<DB_Search> list{Expected("A", "1")};
    m_bar->setSearchPage(list, false);
    QCOMPARE(list.back().pageStart, std::string("-30"));
    QVERIFY(!m_bar->clampPage(0));
}

void TurnPagePluginTest::clampingTouchesNeitherFieldNorSignal()
{
    showPage(5);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    QVERIFY(m_bar->clampPage(31));
    QCOMPARE(field()->text(), QStringLiteral("5"));
    QCOMPARE(total(), QStringLiteral("/ 5"));
    QCOMPARE(changed.count(), 0);
}

void TurnPagePluginTest::firstPage()
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

void TurnPagePluginTest::firstPageWritesTheTotalAgainAfterTheSignal()
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

void TurnPagePluginTest::previousPage()
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

void TurnPagePluginTest::nextPage()
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

void TurnPagePluginTest::lastPage()
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

void TurnPagePluginTest::lastPageSetsTheRowCountFromTheRowsHeld()
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

void TurnPagePluginTest::atAnEndOnlyTheFieldIsRewritten()
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

void TurnPagePluginTest::anotherPageIsReachedByTypingItsNumber()
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

void TurnPagePluginTest::theNumberIsTypedWithTheKeypadToo()
{
    m_bar->setData(someRows(30), 150, QString());
    type(QStringLiteral("2"), Qt::Key_Enter);
    QCOMPARE(currentPage(), 2);
}

void TurnPagePluginTest::aNumberOutOfRangeIsRefused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::newRow("zero") << "0" << int(Qt::Key_Return);
    QTest::newRow("one page too many") << "6" << int(Qt::Key_Return);
    QTest::newRow("more than an int holds") << "99999999999999999999" << int(Qt::Key_Return);
    QTest::newRow("cleared, Return") << "" << int(Qt::Key_Return);
    QTest::newRow("cleared, Enter of the keypad") << "" << int(Qt::Key_Enter);
}

void TurnPagePluginTest::aNumberOutOfRangeIsRefused()
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

void TurnPagePluginTest::thePresentPageIsNoJump()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    MessageBoxProbe probe;
    type(QStringLiteral("3"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(probe.count(), 0);
    QVERIFY(field()->hasFocus());
}

void TurnPagePluginTest::leavingTheFieldIsSilent_data()
{
    QTest::addColumn<QString>("left");
    QTest::newRow("another page") << "4";
    QTest::newRow("out of range") << "99";
    QTest::newRow("cleared") << "";
}

void TurnPagePluginTest::leavingTheFieldIsSilent()
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

void TurnPagePluginTest::aSlotCalledWithoutFocusDoesNothing()
{
    showPage(3);
    MessageBoxProbe probe;
    m_other->setFocus();
    field()->setText(QStringLiteral("99"));
    m_bar->on_m_pGotoPageLE_editingFinished();
    QCOMPARE(probe.count(), 0);
    QCOMPARE(field()->text(), QStringLiteral("99"));
}

void TurnPagePluginTest::theTableIsNotOwned()
{
    m_bar->setData(someRows(3), 31, QString());
    delete m_bar;
    QCOMPARE(m_table->item(2, 0)->text(), QStringLiteral("id2"));
}

KODMS_TEST_MAIN(TurnPagePluginTest, QApplication)
#include "TurnPagePluginTest.moc"
