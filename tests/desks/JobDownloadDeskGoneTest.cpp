// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>

using namespace KODMS::Tests;
using KODMS::UI::Desk;

/// A download while the desk is closed, or its table filled anew, in the middle of
/// it. Under a memory checker these tests also find what is touched too late.
class JobDownloadDeskGoneTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theDownloadEndsWhereTheDeskDies_data();
    void theDownloadEndsWhereTheDeskDies();
    void aDeskDiesWhileItSpeaks_data();
    void aDeskDiesWhileItSpeaks();

    void aDeskDiesWhileItSpeaksOfALostFlow_data() { addDeskRows(); }

    void aDeskDiesWhileItSpeaksOfALostFlow();
    void aDeskDiesWhileItSpeaksOfAMissingGuid();
    void aDeskDiesWhenTheHostHearsOfAWebItem();
    void aDeskDiesWhenAnOrderIsLookedUp_data();
    void aDeskDiesWhenAnOrderIsLookedUp();
    void aDeskDiesWhenAFlowIsFinished();

    void theRowsAreThoseSelectedAtTheAnswer_data() { addDeskRows(); }

    void theRowsAreThoseSelectedAtTheAnswer();
    void aRefillMeanwhileLosesNoRow_data();
    void aRefillMeanwhileLosesNoRow();

    void aSortMeanwhileMixesNoRows_data() { addDeskRows(); }

    void aSortMeanwhileMixesNoRows();

    void anEmptiedTableMeanwhileLosesNoRow_data() { addDeskRows(); }

    void anEmptiedTableMeanwhileLosesNoRow();
};

namespace {

const char *const Operations[] = {"Odbpp_JobFlowBll::select",
                                  "DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName",
                                  "DMS_Function::ExtractorFileFromcompressFile",
                                  "DBS_API::getWebRobotParaByJobName", "DMS_UICommon::inputNewJob"};

void addDesksAnd(const char *column, const QStringList &values)
{
    QTest::addColumn<Desk>("desk");
    QTest::addColumn<QString>(column);
    for (const QString &value : values) {
        QTest::addRow("job-flow desk, %s", qPrintable(value)) << Desk::JobFlow << value;
        QTest::addRow("original-file desk, %s", qPrintable(value)) << Desk::OrigFile << value;
    }
}

QStringList operations()
{
    QStringList names;
    for (const char *name : Operations)
        names << QString::fromLatin1(name);
    return names;
}

void refill(Desk desk)
{
    if (desk == Desk::JobFlow)
        FakeServices::instance().raiseRefreshExportJobTable();
    else
        FakeServices::instance().raiseRefreshOrigFileTable();
}

} // namespace

void JobDownloadDeskGoneTest::theDownloadEndsWhereTheDeskDies_data()
{
    addDesksAnd("operation", operations());
}

void JobDownloadDeskGoneTest::theDownloadEndsWhereTheDeskDies()
{
    QFETCH(Desk, desk);
    QFETCH(QString, operation);
    DownloadWorld world;
    OperationDesk window(desk, tgzRows(3));
    world.during(operation, [&window] { window.remove(); });
    downloadRows(world, window, {0, 1, 2});
    QVERIFY(!window.widget());
    QVERIFY2(world.story().last().startsWith(operation), qPrintable(world.story().last()));
    QCOMPARE(world.story().filter(operation).size(), 1);
}

void JobDownloadDeskGoneTest::aDeskDiesWhileItSpeaks_data()
{
    addDesksAnd("text",
                {QStringLiteral("确认下载这些job?"), QStringLiteral("下载失败或文件已下载!"),
                 QStringLiteral("Download complete!")});
}

void JobDownloadDeskGoneTest::aDeskDiesWhileItSpeaks()
{
    QFETCH(Desk, desk);
    QFETCH(QString, text);
    DownloadWorld world;
    world.fetchingFails(QStringLiteral("flow1"));
    world.fetchingFails(QStringLiteral("flow2"));
    OperationDesk window(desk, tgzRows(2));
    world.whileOpen(text, [&window] { window.remove(); });
    downloadRows(world, window, {0, 1});
    QVERIFY(!window.widget());
    QCOMPARE(world.story().last(), QStringLiteral("box(\"%1\")").arg(text));
    QCOMPARE(world.story().filter(text).size(), 1);
}

void JobDownloadDeskGoneTest::aDeskDiesWhileItSpeaksOfALostFlow()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    FakeServices::instance().jobFlows.once({});
    OperationDesk window(desk, tgzRows(2));
    world.whileOpen(QStringLiteral("下载失败或文件已下载!"), [&window] { window.remove(); });
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask, lookUp(1), Failed}));
}

void JobDownloadDeskGoneTest::aDeskDiesWhileItSpeaksOfAMissingGuid()
{
    const QString text = QStringLiteral("文件获取失败.");
    DownloadWorld world;
    QVector<JobRow> rows = tgzRows(2);
    rows[0].flow.clear();
    OperationDesk window(Desk::JobFlow, rows);
    world.whileOpen(text, [&window] { window.remove(); });
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask, QStringLiteral("box(\"%1\")").arg(text)}));
}

void JobDownloadDeskGoneTest::aDeskDiesWhenTheHostHearsOfAWebItem()
{
    DownloadWorld world;
    QVector<JobRow> rows = tgzRows(2);
    rows[0].origin = QStringLiteral("WEB");
    OperationDesk window(Desk::OrigFile, rows);
    world.listenTo(window.origFile());
    world.during(QStringLiteral("newWebItem"), [&window] { window.remove(); });
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story().last(), QStringLiteral("newWebItem(\"flow1\")"));
}

void JobDownloadDeskGoneTest::aDeskDiesWhenAnOrderIsLookedUp_data()
{
    addDesksAnd("payment", {QStringLiteral("0"), QStringLiteral("1")});
}

void JobDownloadDeskGoneTest::aDeskDiesWhenAnOrderIsLookedUp()
{
    QFETCH(Desk, desk);
    QFETCH(QString, payment);
    DownloadWorld world;
    QVector<JobRow> rows = tgzRows(1);
    rows[0].origin = QStringLiteral("web");
    OperationDesk window(desk, rows);
    FakeServices::instance().orders.compute([&](const auto &) {
        window.remove();
        KODMS::DataLib::Model::Odbpp_Orders order;
        order.payment = payment.toInt();
        return order;
    });
    downloadRows(world, window, {0});
    QCOMPARE(world.story().size(), 1);
    QCOMPARE(world.probe.count(), 0);
}

void JobDownloadDeskGoneTest::aDeskDiesWhenAFlowIsFinished()
{
    DownloadWorld world;
    OperationDesk window(Desk::OrigFile, tgzRows(1), {});
    FakeServices::instance().result("DBS_API::kodms_update_flow_status").compute([&](const auto &) {
        window.remove();
        return 1;
    });
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story(),
             QStringList({QStringLiteral("DBS_API::kodms_update_flow_status(\"board1\", 3, 2)")}));
}

void JobDownloadDeskGoneTest::theRowsAreThoseSelectedAtTheAnswer()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(3));
    world.whileOpen(QStringLiteral("确认下载这些job?"), [&window] {
        window.table()->clearSelection();
        window.select(2);
    });
    downloadRows(world, window, {0});
    QCOMPARE(world.story(FetchOperation), QStringList({fetched(3, Tgz)}));
}

void JobDownloadDeskGoneTest::aRefillMeanwhileLosesNoRow_data()
{
    addDesksAnd("operation", operations());
}

void JobDownloadDeskGoneTest::aRefillMeanwhileLosesNoRow()
{
    QFETCH(Desk, desk);
    QFETCH(QString, operation);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(3));
    world.during(operation, [desk] { refill(desk); });
    downloadRows(world, window, {0, 2});
    QCOMPARE(world.story(FetchOperation), QStringList({fetched(1, Tgz), fetched(3, Tgz)}));
    QCOMPARE(world.story(QStringLiteral("DMS_UICommon::inputNewJob")),
             QStringList({folderHandedOver(1), folderHandedOver(3)}));
}

void JobDownloadDeskGoneTest::aSortMeanwhileMixesNoRows()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(3));
    const int nameColumn = desk == Desk::JobFlow ? 1 : 0;
    world.during(FetchOperation,
                 [&] { window.table()->sortItems(nameColumn, Qt::DescendingOrder); });
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(FetchOperation), QStringList({fetched(1, Tgz), fetched(2, Tgz)}));
}

void JobDownloadDeskGoneTest::anEmptiedTableMeanwhileLosesNoRow()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.fetchingFails(QStringLiteral("flow1"));
    const OperationDesk window(desk, tgzRows(2));
    world.whileOpen(QStringLiteral("下载失败或文件已下载!"),
                    [&window] { window.table()->setRowCount(0); });
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask}) + failedRow(1) + wholeRow(2) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow2"))}));
}

KODMS_TEST_MAIN(JobDownloadDeskGoneTest, QApplication)
#include "JobDownloadDeskGoneTest.moc"
