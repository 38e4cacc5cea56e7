// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "tests/desks/BoxStory.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Flow_View;
using KODMS::DataLib::Model::Odbpp_JobFlow;
using KODMS::Fakes::Call;

/// Passing and failing the selected jobs.
class ExportWidgetReviewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();

    void cleanup() { m_desk.reset(); }

    void withoutACurrentRowTheUserIsAskedToSelect_data();
    void withoutACurrentRowTheUserIsAskedToSelect();
    void theRowIsAskedForBeforeTheRights();
    void aVerdictIsStoredOnJobAndFlow_data();
    void aVerdictIsStoredOnJobAndFlow();
    void everySelectedRowFromTopToBottom_data();
    void everySelectedRowFromTopToBottom();
    void aFlowKeepsItsStatus();
    void aFlowThatIsGoneGetsTheFlagOnly();
    void aRowWithoutOriginalNameIsSkippedWithAMessage_data();
    void aRowWithoutOriginalNameIsSkippedWithAMessage();
    void aBlankNameIsAName();
    void everySkippedRowSaysSo();
    void theMessageOfASkippedRow();
    void anUnselectedCurrentRowOnlyRefreshes();
    void aCellOutsideTheFirstColumnSelectsNothing();
    void foreignRowsAreRefusedWithoutARefresh();
    void ownRowsAreNot();
    void nobodyLooksAtResults_data();
    void nobodyLooksAtResults();
    void theUserIsAskedForEachRow();
    void theHubComesBeforeTheDesksOwnSearch();
    void rowsAreReadBeforeTheFirstMessage();
    void aDeskThatGoesDuringAMessageStops();
    void aDeskThatGoesWithTheRefreshIsNotTouched();
    void theTableIsFilledAnewAfterwards();

private:
    /// A desk for an administrator, or whoever has `rights`, with these flows.
    void show(const std::vector<Odbpp_Flow_View> &flows,
              std::initializer_list<Right> rights = {Right::Admin});
    void select(const QVector<int> &rows) const;

    void press(const char *button) const { control<QPushButton>(*m_desk, button)->click(); }

    std::unique_ptr<KODMS::UI::DMS_Export_Widget> m_desk;
};

namespace {

const QString Search = QStringLiteral("Odbpp_Flow_ViewBll::selectAndCountBySearchModel");
const QString ImportFirst = QStringLiteral("box(\"请先导入odbpp!\")");
const QString Refresh = QStringLiteral("DMS_UICommon::emitGobalSingal()");

/// What a verdict writes for the flow `id`, whose status is 1.
QStringList stored(int id, int verdict)
{
    const QString guid = QStringLiteral("\"guid%1\"").arg(id);
    return {QStringLiteral("Odbpp_JobBll::UpdateCheckFlag(42, %1, %1, \"A1B%2\", %3)")
                .arg(verdict)
                .arg(100000 + id)
                .arg(id),
            QStringLiteral("Odbpp_JobFlowBll::getFlowByGuid(%1)").arg(guid),
            QStringLiteral("Odbpp_JobFlowBll::UpdateState(42, 1, %1, %2)").arg(verdict).arg(guid),
            QStringLiteral(
                "Odbpp_JobFlowBll::UpdatePreImportOrCheckTime(%1, 42, 0, \"\", 42, \"\", 0, \"\")")
                .arg(guid)};
}

/// What happened, with searches cut short to their name.
QString story()
{
    QStringList lines = BoxStory::lines();
    for (QString &line : lines)
        if (line.startsWith(Search))
            line = QStringLiteral("search");
    return lines.join(QLatin1Char('\n'));
}

QString told(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n'));
}

const QStringList End{Refresh, QStringLiteral("search"), QStringLiteral("search")};

Odbpp_Flow_View flowWithoutName(int id)
{
    Odbpp_Flow_View flow = someFlow(id);
    flow.origJobName.clear();
    return flow;
}

Odbpp_JobFlow foundFlow(int status)
{
    Odbpp_JobFlow flow;
    flow.id = 9;
    flow.flowStatus = status;
    return flow;
}

} // namespace

void ExportWidgetReviewTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().setUser(42);
    FakeServices::instance().flowByGuid.always(foundFlow(1));
}

void ExportWidgetReviewTest::show(const std::vector<Odbpp_Flow_View> &flows,
                                  std::initializer_list<Right> rights)
{
    FakeServices::instance().flowPages.always({flows, static_cast<int>(flows.size()), true});
    m_desk = makeDesk(rights);
    FakeServices::instance().forgetCalls();
}

/// The last one becomes the current row.
void ExportWidgetReviewTest::select(const QVector<int> &rows) const
{
    auto *table = jobTable(*m_desk);
    table->clearSelection();
    for (int row : rows)
        table->selectionModel()->setCurrentIndex(
            table->model()->index(row, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void ExportWidgetReviewTest::withoutACurrentRowTheUserIsAskedToSelect_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("pass") << QByteArray("m_pJobPassPB");
    QTest::newRow("fail") << QByteArray("m_pJobUnpassPB");
}

void ExportWidgetReviewTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    QFETCH(QByteArray, button);
    show({someFlow(1)});
    const BoxStory boxes;
    press(button.constData());
    QCOMPARE(story(), QStringLiteral("box(\"请选择一个料号\")"));
    QVERIFY(FakeServices::instance().calls("DMS_StdCommon::getCurrentUser").isEmpty());
}

/// Foreign rows can be selected without any being current.
void ExportWidgetReviewTest::theRowIsAskedForBeforeTheRights()
{
    Odbpp_Flow_View foreign = someFlow(1);
    foreign.preCheckUserId = 43;
    show({foreign}, {Right::CheckAuthority});
    auto *table = jobTable(*m_desk);
    table->setRangeSelected({0, 0, 0, table->columnCount() - 1}, true);
    QCOMPARE(table->currentRow(), -1);
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), QStringLiteral("box(\"请选择一个料号\")"));
}

void ExportWidgetReviewTest::aVerdictIsStoredOnJobAndFlow_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("verdict");
    QTest::newRow("pass") << QByteArray("m_pJobPassPB") << 2;
    QTest::newRow("fail") << QByteArray("m_pJobUnpassPB") << 1;
}

void ExportWidgetReviewTest::aVerdictIsStoredOnJobAndFlow()
{
    QFETCH(QByteArray, button);
    QFETCH(int, verdict);
    show({someFlow(1), someFlow(2)});
    select({1});
    const BoxStory boxes;
    press(button.constData());
    QCOMPARE(story(), told(stored(2, verdict) + End));
}

void ExportWidgetReviewTest::everySelectedRowFromTopToBottom_data()
{
    QTest::addColumn<QVector<int>>("rows");
    QTest::newRow("as they were clicked") << QVector<int>{0, 2, 3};
    QTest::newRow("clicked from the bottom") << QVector<int>{3, 2, 0};
}

void ExportWidgetReviewTest::everySelectedRowFromTopToBottom()
{
    QFETCH(QVector<int>, rows);
    show({someFlow(1), someFlow(2), someFlow(3), someFlow(4)});
    select(rows);
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(1, 2) + stored(3, 2) + stored(4, 2) + End));
}

void ExportWidgetReviewTest::aFlowKeepsItsStatus()
{
    FakeServices::instance().flowByGuid.once(foundFlow(2));
    FakeServices::instance().flowByGuid.once(foundFlow(0));
    show({someFlow(1), someFlow(2)});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobUnpassPB");
    const auto states = FakeServices::instance().calls("Odbpp_JobFlowBll::UpdateState");
    QCOMPARE(states.size(), 2);
    QCOMPARE(states.at(0).arguments.at(1).toInt(), 2);
    QCOMPARE(states.at(1).arguments.at(1).toInt(), 0);
    QCOMPARE(states.at(0).arguments.at(2).toInt(), 1);
}

void ExportWidgetReviewTest::aFlowThatIsGoneGetsTheFlagOnly()
{
    FakeServices::instance().flowByGuid.once(Odbpp_JobFlow());
    show({someFlow(1), someFlow(2)});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(1, 2).mid(0, 2) + stored(2, 2) + End));
}

void ExportWidgetReviewTest::aRowWithoutOriginalNameIsSkippedWithAMessage_data()
{
    aVerdictIsStoredOnJobAndFlow_data();
}

void ExportWidgetReviewTest::aRowWithoutOriginalNameIsSkippedWithAMessage()
{
    QFETCH(QByteArray, button);
    QFETCH(int, verdict);
    show({someFlow(1), flowWithoutName(2), someFlow(3)});
    select({0, 1, 2});
    const BoxStory boxes;
    press(button.constData());
    QCOMPARE(story(),
             told(stored(1, verdict) + QStringList(ImportFirst) + stored(3, verdict) + End));
}

void ExportWidgetReviewTest::aBlankNameIsAName()
{
    Odbpp_Flow_View flow = someFlow(1);
    flow.origJobName = " ";
    show({flow});
    select({0});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(1, 2) + End));
}

void ExportWidgetReviewTest::everySkippedRowSaysSo()
{
    show({flowWithoutName(1), flowWithoutName(2)});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(QStringList{ImportFirst, ImportFirst} + End));
    QVERIFY(FakeServices::instance().calls("DMS_StdCommon::getCurrentUser").size() <=
            2 * searches()); // those of the searches: no row asked for the user
}

void ExportWidgetReviewTest::theMessageOfASkippedRow()
{
    show({flowWithoutName(1)});
    select({0});
    const BoxStory boxes;
    press("m_pJobPassPB");
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetReviewTest::anUnselectedCurrentRowOnlyRefreshes()
{
    show({someFlow(1)});
    select({0});
    jobTable(*m_desk)->clearSelection();
    QCOMPARE(jobTable(*m_desk)->currentRow(), 0);
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(End));
}

void ExportWidgetReviewTest::aCellOutsideTheFirstColumnSelectsNothing()
{
    show({someFlow(1)});
    auto *table = jobTable(*m_desk);
    table->selectionModel()->setCurrentIndex(table->model()->index(0, 1),
                                             QItemSelectionModel::Select);
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(End));
}

/// The check of the download rights serves here, too, and says so in its own words.
void ExportWidgetReviewTest::foreignRowsAreRefusedWithoutARefresh()
{
    Odbpp_Flow_View foreign = someFlow(2);
    foreign.preCheckUserId = 43;
    Odbpp_Flow_View own = someFlow(1);
    own.preCheckUserId = 42;
    show({own, foreign}, {Right::CheckAuthority});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), QStringLiteral("box(\"以下项你没有下载权限：2\")"));
}

void ExportWidgetReviewTest::ownRowsAreNot()
{
    Odbpp_Flow_View foreign = someFlow(2);
    foreign.preCheckUserId = 43;
    Odbpp_Flow_View own = someFlow(1);
    own.preCheckUserId = 42;
    show({own, foreign}, {Right::CheckAuthority});
    select({0});
    const BoxStory boxes;
    press("m_pJobUnpassPB");
    QCOMPARE(story(), told(stored(1, 1) + End));
}

void ExportWidgetReviewTest::nobodyLooksAtResults_data()
{
    QTest::addColumn<QByteArray>("step");
    for (const char *step : {"Odbpp_JobBll::UpdateCheckFlag", "Odbpp_JobFlowBll::UpdateState",
                             "Odbpp_JobFlowBll::UpdatePreImportOrCheckTime"})
        QTest::newRow(step) << QByteArray(step);
}

void ExportWidgetReviewTest::nobodyLooksAtResults()
{
    QFETCH(QByteArray, step);
    FakeServices::instance().result(step.constData()).always(0);
    show({someFlow(1), someFlow(2)});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(1, 2) + stored(2, 2) + End));
}

/// Not once for all: the rows' verdicts are those of whoever is signed in then.
void ExportWidgetReviewTest::theUserIsAskedForEachRow()
{
    FakeServices::instance()
        .result("Odbpp_JobFlowBll::UpdatePreImportOrCheckTime")
        .compute([](const Call &) {
            FakeServices::instance().setUser(77);
            return 1;
        });
    show({someFlow(1), someFlow(2)});
    select({0, 1});
    const BoxStory boxes;
    press("m_pJobPassPB");
    const auto flags = FakeServices::instance().calls("Odbpp_JobBll::UpdateCheckFlag");
    QCOMPARE(flags.at(0).arguments.first().toInt(), 42);
    QCOMPARE(flags.at(1).arguments.first().toInt(), 77);
}

/// The hub's own refresh reaches this desk, too; without it one search is left.
void ExportWidgetReviewTest::theHubComesBeforeTheDesksOwnSearch()
{
    FakeServices::instance().hubRaisesSignals = false;
    show({someFlow(1)});
    select({0});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(1, 2) + QStringList{Refresh, QStringLiteral("search")}));
}

/// While the message waits, another window's refresh may bring other rows, with
/// nothing selected.
void ExportWidgetReviewTest::rowsAreReadBeforeTheFirstMessage()
{
    show({flowWithoutName(1), someFlow(2), someFlow(3)});
    select({0, 1, 2});
    BoxStory boxes;
    boxes.whileOpen("请先导入odbpp!", [] {
        FakeServices::instance().flowPages.always({{someFlow(7), someFlow(8)}, 2, true});
        FakeServices::instance().raiseRefreshExportJobTable();
        FakeServices::instance().forgetCalls();
    });
    press("m_pJobPassPB");
    QCOMPARE(story(), told(stored(2, 2) + stored(3, 2) + End));
}

void ExportWidgetReviewTest::aDeskThatGoesDuringAMessageStops()
{
    show({flowWithoutName(1), someFlow(2)});
    select({0, 1});
    BoxStory boxes;
    boxes.whileOpen("请先导入odbpp!", [this] { m_desk.reset(); });
    press("m_pJobPassPB");
    QVERIFY(!m_desk);
    QCOMPARE(story(), ImportFirst);
}

void ExportWidgetReviewTest::aDeskThatGoesWithTheRefreshIsNotTouched()
{
    show({someFlow(1)});
    select({0});
    QWidget hostWindow;
    connect(KODMS::UI::DMS_UICommon::interface(), &KODMS::UI::DMS_UICommon::refreshOrigFileTable,
            &hostWindow, [this] { m_desk.reset(); });
    const BoxStory boxes;
    control<QPushButton>(*m_desk, "m_pJobPassPB")->click();
    QVERIFY(!m_desk);
    QCOMPARE(story(), told(stored(1, 2) + QStringList{Refresh}));
}

void ExportWidgetReviewTest::theTableIsFilledAnewAfterwards()
{
    show({someFlow(1), someFlow(2)});
    select({0});
    FakeServices::instance().flowPages.always({{someFlow(2)}, 1, true});
    const BoxStory boxes;
    press("m_pJobPassPB");
    QCOMPARE(jobTable(*m_desk)->rowCount(), 1);
    QCOMPARE(jobTable(*m_desk)->currentRow(), -1);
}

KODMS_TEST_MAIN(ExportWidgetReviewTest, QApplication)
#include "ExportWidgetReviewTest.moc"
