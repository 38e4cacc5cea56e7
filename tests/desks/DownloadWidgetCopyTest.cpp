// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadDesk.h"
#include "tests/desks/MenuProbe.h"
#include "tests/desks/Receivers.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCursor>
#include <QLineEdit>

using namespace KODMS::Tests;

/// The menus of the original-file desk and what they put on the clipboard.
class DownloadWidgetCopyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        FakeServices::instance().reset();
        QApplication::clipboard()->setText(QStringLiteral("before"));
    }

    void withoutACurrentCellNoMenuOpens_data();
    void withoutACurrentCellNoMenuOpens();
    void theTableMenu();
    void theMenuOpensAtTheMouse();
    void everyActionReachesItsSlotOnce_data();
    void everyActionReachesItsSlotOnce();
    void menusLiveAsLongAsTheTable();
    void closingTheMenuCopiesNothing();
    void theHeaderMenuOpensOnTheFirstColumnOnly_data();
    void theHeaderMenuOpensOnTheFirstColumnOnly();
    void theHeaderMenuDoesNothing();
    void aRightClickOpensTheMenu();
    void choosingAnActionCopies_data();
    void choosingAnActionCopies();
    void copyingTheSelection();
    void copyingARowEndsInATab();
    void copyingAColumnCountsEveryRow();
    void copyingEverythingNeverShowsHiddenColumns_data();
    void copyingEverythingNeverShowsHiddenColumns();
    void onlyThePageIsCopied();
    void colourCodesAreNotCopied();
    void theSlotsCopyWithoutAMenu();
    void aDeskMayDieUnderItsMenu();
    void aRefillUnderAnOpenMenuIsCopied();

private:
    static QString clipboard() { return QApplication::clipboard()->text(); }
};

namespace {

constexpr char TableMenu[] = "on_m_pJobTableWidget_customContextMenuRequest";
constexpr char HeaderMenu[] = "on_m_pJobTableWidget_Header_customContextMenuRequest";

using Rights = QVector<Right>;
const Rights Admin = {Right::Admin};

bool call(QObject &desk, const char *slot)
{
    return QMetaObject::invokeMethod(&desk, slot, Qt::DirectConnection);
}

/// Asks for a menu at a place that is not the mouse's.
bool openMenu(QObject &desk, const char *slot)
{
    return QMetaObject::invokeMethod(&desk, slot, Qt::DirectConnection,
                                     Q_ARG(QPoint, QPoint(3, 4)));
}

/// Gives a probe the chance to find that nothing opened.
void letTheProbeLook()
{
    QCoreApplication::processEvents();
}

} // namespace

void DownloadWidgetCopyTest::withoutACurrentCellNoMenuOpens_data()
{
    QTest::addColumn<int>("files");
    QTest::newRow("an empty table") << 0;
    QTest::newRow("rows, none of them current") << 3;
}

void DownloadWidgetCopyTest::withoutACurrentCellNoMenuOpens()
{
    QFETCH(int, files);
    answerWithFiles(files);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentItem(nullptr);
    QCOMPARE(jobTable(*desk)->currentRow(), -1);
    const MenuProbe probe;
    QVERIFY(openMenu(*desk, TableMenu));
    letTheProbeLook();
    QVERIFY(!probe.hasOpened());
    QVERIFY(!jobTable(*desk)->findChild<QMenu *>());
}

void DownloadWidgetCopyTest::theTableMenu()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(1, 4);
    const MenuProbe probe;
    QVERIFY(openMenu(*desk, TableMenu));
    QVERIFY(probe.hasOpened());
    QCOMPARE(probe.captions().join(QLatin1Char('/')),
             QStringLiteral("Copy/复制当前列/复制当前行/复制所有"));
    QCOMPARE(probe.menu()->parentWidget(), jobTable(*desk));
}

void DownloadWidgetCopyTest::theMenuOpensAtTheMouse()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    QCursor::setPos(120, 90);
    QCOMPARE(QCursor::pos(), QPoint(120, 90));
    const MenuProbe table;
    QVERIFY(openMenu(*desk, TableMenu));
    QCOMPARE(table.position(), QPoint(120, 90));
    QCursor::setPos(60, 150);
    const MenuProbe header;
    QVERIFY(openMenu(*desk, HeaderMenu));
    QCOMPARE(header.position(), QPoint(60, 150));
}

void DownloadWidgetCopyTest::everyActionReachesItsSlotOnce_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("selection") << 0 << QByteArray("on__copyAct_triggered()");
    QTest::newRow("column") << 1 << QByteArray("on__copyColumnAct_triggered()");
    QTest::newRow("row") << 2 << QByteArray("on__copyRowAct_triggered()");
    QTest::newRow("everything") << 3 << QByteArray("on__copyAllAct_triggered()");
}

void DownloadWidgetCopyTest::everyActionReachesItsSlotOnce()
{
    QFETCH(int, action);
    QFETCH(QByteArray, slot);
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    const MenuProbe probe;
    QVERIFY(openMenu(*desk, TableMenu));
    const QAction *entry = probe.menu()->actions().at(action);
    const int own = Receivers::of(QMenu().addAction(QString()), "triggered(bool)");
    QCOMPARE(Receivers::of(entry, "triggered(bool)"), own + 1);
    QVERIFY(disconnect(entry, SIGNAL(triggered(bool)), desk.get(), asSlot(slot).constData()));
    QVERIFY(!disconnect(entry, nullptr, desk.get(), nullptr));
}

void DownloadWidgetCopyTest::menusLiveAsLongAsTheTable()
{
    answerWithFiles(3);
    auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    const MenuProbe first;
    QVERIFY(openMenu(*desk, TableMenu));
    const MenuProbe second;
    QVERIFY(openMenu(*desk, TableMenu));
    QVERIFY(first.menu());
    QVERIFY(first.menu() != second.menu());
    QCOMPARE(jobTable(*desk)->findChildren<QMenu *>().size(), 2);
    desk.reset();
    QVERIFY(!first.menu());
    QVERIFY(!second.menu());
}

void DownloadWidgetCopyTest::closingTheMenuCopiesNothing()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    const MenuProbe probe([](QMenu *menu) { QTest::keyClick(menu, Qt::Key_Escape); });
    QVERIFY(openMenu(*desk, TableMenu));
    QVERIFY(probe.hasOpened());
    QCOMPARE(clipboard(), QStringLiteral("before"));
}

void DownloadWidgetCopyTest::theHeaderMenuOpensOnTheFirstColumnOnly_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("opens");
    QTest::newRow("no current cell") << -1 << false;
    QTest::newRow("the first column") << 0 << true;
    QTest::newRow("the second") << 1 << false;
    QTest::newRow("the last") << 15 << false;
}

void DownloadWidgetCopyTest::theHeaderMenuOpensOnTheFirstColumnOnly()
{
    QFETCH(int, column);
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(column < 0 ? -1 : 1, column);
    QCOMPARE(jobTable(*desk)->currentColumn(), column);
    const MenuProbe probe;
    QVERIFY(openMenu(*desk, HeaderMenu));
    letTheProbeLook();
    QTEST(probe.hasOpened(), "opens");
    if (!probe.hasOpened())
        return;
    QCOMPARE(probe.captions(), QStringList({QStringLiteral("Copy")}));
    QCOMPARE(probe.menu()->parentWidget(), jobTable(*desk));
}

void DownloadWidgetCopyTest::theHeaderMenuDoesNothing()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    const MenuProbe probe(clickAction(QStringLiteral("Copy")));
    QVERIFY(openMenu(*desk, HeaderMenu));
    QVERIFY(probe.hasOpened());
    QCOMPARE(clipboard(), QStringLiteral("before"));
    QVERIFY(!disconnect(probe.menu()->actions().first(), nullptr, desk.get(), nullptr));
}

/// By the mouse: the press makes the cell the current one, the request follows.
void DownloadWidgetCopyTest::aRightClickOpensTheMenu()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    auto *table = jobTable(*desk);
    const QPoint cell = table->visualItemRect(table->item(2, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::RightButton, {}, cell);
    const MenuProbe probe(clickAction(QStringLiteral("Copy")));
    QContextMenuEvent request(QContextMenuEvent::Mouse, cell, table->viewport()->mapToGlobal(cell));
    QApplication::sendEvent(table->viewport(), &request);
    QVERIFY(probe.hasOpened());
    QCOMPARE(clipboard(), QStringLiteral("\nboard3\n"));
}

void DownloadWidgetCopyTest::choosingAnActionCopies_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("text");
    QTest::newRow("selection") << "Copy"
                               << "\nboard2\tA1B\n";
    QTest::newRow("column") << QStringLiteral("复制当前列") << "A1B\nA1B\n";
    QTest::newRow("row") << QStringLiteral("复制当前行")
                         << "board2\t\tA1B\ttgz\t000002\t\t\t\t\t\t\t";
    QTest::newRow("everything") << QStringLiteral("复制所有")
                                << "board1\t\tA1B\ttgz\t000001\t\t\t\t\t\t\n"
                                   "board2\t\tA1B\ttgz\t000002\t\t\t\t\t\t\n";
}

void DownloadWidgetCopyTest::choosingAnActionCopies()
{
    QFETCH(QString, action);
    answerWithFiles(2);
    const auto desk = makeDownloadDesk(Admin);
    auto *table = jobTable(*desk);
    table->setCurrentCell(1, 2);
    table->item(1, 0)->setSelected(true);
    const MenuProbe probe(clickAction(action));
    QVERIFY(openMenu(*desk, TableMenu));
    QTEST(clipboard(), "text");
}

void DownloadWidgetCopyTest::copyingTheSelection()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    auto *table = jobTable(*desk);
    table->item(1, 2)->setSelected(true);
    table->item(1, 4)->setSelected(true);
    table->item(1, 5)->setSelected(true); // hidden
    QVERIFY(call(*desk, "on__copyAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("\nA1B\t000002\n"));
    table->clearSelection();
    QVERIFY(call(*desk, "on__copyAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("\n"));
}

void DownloadWidgetCopyTest::copyingARowEndsInATab()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::TestAdmin});
    jobTable(*desk)->setCurrentCell(2, 0);
    QVERIFY(call(*desk, "on__copyRowAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("board3\tA1B\ttgz\t000003\t\t\t\t\t"));
}

void DownloadWidgetCopyTest::copyingAColumnCountsEveryRow()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(2, 8);
    QVERIFY(call(*desk, "on__copyColumnAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("\n\n\n"));
    jobTable(*desk)->setCurrentCell(2, 6); // hidden
    QVERIFY(call(*desk, "on__copyColumnAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("1\n2\n3\n"));
}

void DownloadWidgetCopyTest::copyingEverythingNeverShowsHiddenColumns_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<bool>("customers");
    QTest::newRow("administrator") << Admin << true;
    QTest::newRow("test administrator") << Rights({Right::TestAdmin}) << false;
}

void DownloadWidgetCopyTest::copyingEverythingNeverShowsHiddenColumns()
{
    QFETCH(Rights, rights);
    QFETCH(bool, customers);
    auto file = someFile(1);
    file.koName = "customer";
    file.superiorCo1 = "level2";
    file.superiorCo2 = "level3";
    file.fileDescription = "description";
    file.preUserId = 4711;
    file.id = 4712;
    FakeServices::instance().origFilePages.always({{file}, 1});
    const auto desk = makeDownloadDesk(rights);
    QVERIFY(call(*desk, "on__copyAllAct_triggered"));
    QVERIFY(clipboard().startsWith(QStringLiteral("board1\t")));
    const char *const always[] = {"file1.tgz", "4712", "description", "guid1", "4711"};
    for (const char *hidden : always)
        QVERIFY2(!clipboard().contains(QLatin1String(hidden)), hidden);
    const char *const byRole[] = {"customer", "level2", "level3"};
    for (const char *name : byRole)
        QVERIFY2(clipboard().contains(QLatin1String(name)) == customers, name);
}

void DownloadWidgetCopyTest::onlyThePageIsCopied()
{
    answerWithFiles(45);
    const auto desk = makeDownloadDesk(Admin);
    QTest::mouseClick(control(*desk, "m_pPageDownPB"), Qt::LeftButton);
    QVERIFY(call(*desk, "on__copyAllAct_triggered"));
    QCOMPARE(clipboard().count(QLatin1Char('\n')), 15);
    QVERIFY(clipboard().startsWith(QStringLiteral("board31\t")));
}

void DownloadWidgetCopyTest::colourCodesAreNotCopied()
{
    answerWithFlows(1);
    const auto desk = makeDownloadDesk();
    jobTable(*desk)->setCurrentCell(0, 6);
    QVERIFY(call(*desk, "on__copyColumnAct_triggered"));
    QCOMPARE(clipboard(), QStringLiteral("待前处理\n"));
}

void DownloadWidgetCopyTest::theSlotsCopyWithoutAMenu()
{
    const auto desk = makeDownloadDesk(Admin);
    const char *const slots_[] = {"on__copyAct_triggered", "on__copyColumnAct_triggered",
                                  "on__copyRowAct_triggered", "on__copyAllAct_triggered"};
    for (const char *slot : slots_) {
        QApplication::clipboard()->setText(QStringLiteral("before"));
        QVERIFY(call(*desk, slot));
        QCOMPARE(clipboard(), QString());
    }
}

void DownloadWidgetCopyTest::aDeskMayDieUnderItsMenu()
{
    answerWithFiles(3);
    auto desk = makeDownloadDesk(Admin);
    jobTable(*desk)->setCurrentCell(0, 0);
    const MenuProbe probe([&desk](QMenu *) { desk.reset(); });
    openMenu(*desk, TableMenu);
    QVERIFY(probe.hasOpened());
    QVERIFY(!desk);
    QVERIFY(!probe.menu());
}

/// The rows may change while the menu is open: the texts of the moment count.
void DownloadWidgetCopyTest::aRefillUnderAnOpenMenuIsCopied()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::TestAdmin});
    jobTable(*desk)->setCurrentCell(2, 0);
    const MenuProbe probe([](QMenu *menu) {
        answerWithFiles(1);
        FakeServices::instance().raiseRefreshOrigFileTable();
        clickAction(QStringLiteral("复制所有"))(menu);
    });
    QVERIFY(openMenu(*desk, TableMenu));
    QCOMPARE(clipboard(), QStringLiteral("board1\tA1B\ttgz\t000001\t\t\t\t\n"));
}

KODMS_TEST_MAIN(DownloadWidgetCopyTest, QApplication)
#include "DownloadWidgetCopyTest.moc"
