// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace KODMS::Tests;
using KODMS::UI::Desk;

/// Rows of a download that fail, and what becomes of the others.
class JobDownloadFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void whatCannotBeUnpackedIsKeptUnderItsStoredName_data();
    void whatCannotBeUnpackedIsKeptUnderItsStoredName();
    void anyOtherAnswerOfUnpackingIsSuccess_data();
    void anyOtherAnswerOfUnpackingIsSuccess();

    void aRowThatFailsIsToldAndTheOthersGoOn_data() { addDeskRows(); }

    void aRowThatFailsIsToldAndTheOthersGoOn();

    void aFileThatDidNotComeIsAFailedRow_data() { addDeskRows(); }

    void aFileThatDidNotComeIsAFailedRow();

    void aRowWhoseFlowIsGoneIsAFailedRow_data() { addDeskRows(); }

    void aRowWhoseFlowIsGoneIsAFailedRow();
    void aJobFlowWithoutAGuidEndsTheLoop();
    void anOriginalFileWithoutAGuidIsLookedUp();
    void withoutARootNothingIsMadeElsewhere();

    void completeAndOpenedWhenEveryRowFailed_data() { addDeskRows(); }

    void completeAndOpenedWhenEveryRowFailed();

    void theFolderOpenedIsTheLastOneEvenOfAnEarlierDownload_data() { addDeskRows(); }

    void theFolderOpenedIsTheLastOneEvenOfAnEarlierDownload();
};

namespace {

void addPairs(const char *column, std::initializer_list<int> values)
{
    QTest::addColumn<Desk>("desk");
    QTest::addColumn<int>(column);
    for (const int value : values) {
        QTest::addRow("job-flow desk, %d", value) << Desk::JobFlow << value;
        QTest::addRow("original-file desk, %d", value) << Desk::OrigFile << value;
    }
}

} // namespace

void JobDownloadFailuresTest::whatCannotBeUnpackedIsKeptUnderItsStoredName_data()
{
    addPairs("answer", {0, -1});
}

void JobDownloadFailuresTest::whatCannotBeUnpackedIsKeptUnderItsStoredName()
{
    QFETCH(Desk, desk);
    QFETCH(int, answer);
    DownloadWorld world;
    world.unpackingFails(QStringLiteral("flow1"), answer);
    const OperationDesk window(desk, tgzRows(1));
    downloadRows(world, window, {0});
    QCOMPARE(world.content(QStringLiteral("flow1/file1")), QStringLiteral("file1"));
    QVERIFY(!world.exists(QStringLiteral("flow1.tgz")));
    QCOMPARE(world.story(), QStringList({Ask}) + wholeRow(1) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow1"))}));
}

void JobDownloadFailuresTest::anyOtherAnswerOfUnpackingIsSuccess_data()
{
    addPairs("answer", {1, 2, -2});
}

void JobDownloadFailuresTest::anyOtherAnswerOfUnpackingIsSuccess()
{
    QFETCH(Desk, desk);
    QFETCH(int, answer);
    DownloadWorld world;
    world.unpackingFails(QStringLiteral("flow1"), answer);
    const OperationDesk window(desk, tgzRows(1));
    downloadRows(world, window, {0});
    QVERIFY(!world.exists(QStringLiteral("flow1/file1")));
    QVERIFY(!world.exists(QStringLiteral("flow1.tgz")));
    QCOMPARE(world.story(Failed), QStringList());
}

void JobDownloadFailuresTest::aRowThatFailsIsToldAndTheOthersGoOn()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.write(QStringLiteral("flow2/file2"), QStringLiteral("from last time"));
    world.unpackingFails(QStringLiteral("flow2"), -1);
    world.unpackingFails(QStringLiteral("flow3"), 0);
    const OperationDesk window(desk, tgzRows(4));
    downloadRows(world, window, {0, 1, 2, 3});
    QCOMPARE(world.story(), QStringList({Ask}) + wholeRow(1) + failedRow(2) + wholeRow(3) +
                                wholeRow(4) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow4"))}));
    QCOMPARE(world.content(QStringLiteral("flow2/file2")), QStringLiteral("from last time"));
    QCOMPARE(world.content(QStringLiteral("flow2.tgz")), QStringLiteral("file2"));
    const auto box = world.probe.boxes().at(1);
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void JobDownloadFailuresTest::aFileThatDidNotComeIsAFailedRow()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.fetchingFails(QStringLiteral("flow1"));
    const OperationDesk window(desk, tgzRows(2));
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask}) + failedRow(1) + wholeRow(2) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow2"))}));
    QVERIFY(world.exists(QStringLiteral("flow1")));
}

void JobDownloadFailuresTest::aRowWhoseFlowIsGoneIsAFailedRow()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    FakeServices::instance().jobFlows.once({});
    const OperationDesk window(desk, tgzRows(2));
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask, lookUp(1), Failed}) + wholeRow(2) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow2"))}));
}

void JobDownloadFailuresTest::aJobFlowWithoutAGuidEndsTheLoop()
{
    DownloadWorld world;
    QVector<JobRow> rows = tgzRows(3);
    rows[1].flow.clear();
    const OperationDesk window(Desk::JobFlow, rows);
    downloadRows(world, window, {0, 1, 2});
    QCOMPARE(world.story(), QStringList({Ask}) + wholeRow(1) +
                                QStringList({QStringLiteral("box(\"文件获取失败.\")"), Complete,
                                             opened(QStringLiteral("ROOT\\flow1"))}));
    const auto box = world.probe.boxes().at(1);
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void JobDownloadFailuresTest::anOriginalFileWithoutAGuidIsLookedUp()
{
    DownloadWorld world;
    QVector<JobRow> rows = tgzRows(2);
    rows[0].flow.clear();
    FakeServices::instance().jobFlows.once({});
    const OperationDesk window(Desk::OrigFile, rows);
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story().mid(0, 4),
             QStringList({Ask, QStringLiteral("Odbpp_JobFlowBll::select({FlowGUID: }, {})"), Failed,
                          lookUp(2)}));
}

void JobDownloadFailuresTest::withoutARootNothingIsMadeElsewhere()
{
    DownloadWorld world;
    const QTemporaryDir elsewhere;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(elsewhere.path()));
    const QString gone = world.root() + QStringLiteral("no/");
    FakeServices::instance().config.downloadDir = gone.toStdString();
    world.fetchingFails(QStringLiteral("flow1"));
    const OperationDesk window(Desk::JobFlow, tgzRows(1));
    downloadRows(world, window, {0});
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(QDir(elsewhere.path()).isEmpty());
    QVERIFY(!world.exists(QStringLiteral("flow1")));
    QCOMPARE(world.story(Failed).size(), 1);
}

void JobDownloadFailuresTest::completeAndOpenedWhenEveryRowFailed()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.fetchingFails(QStringLiteral("flow1"));
    world.fetchingFails(QStringLiteral("flow2"));
    const OperationDesk window(desk, tgzRows(2));
    downloadRows(world, window, {0, 1});
    QCOMPARE(world.story(), QStringList({Ask}) + failedRow(1) + failedRow(2) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow2"))}));
}

void JobDownloadFailuresTest::theFolderOpenedIsTheLastOneEvenOfAnEarlierDownload()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(2));
    downloadRows(world, window, {0});
    window.table()->clearSelection();
    FakeServices::instance().jobFlows.once({});
    downloadRows(world, window, {1});
    QCOMPARE(world.story().mid(world.story().size() - 3),
             QStringList({Failed, Complete, opened(QStringLiteral("ROOT\\flow1"))}));
}

KODMS_TEST_MAIN(JobDownloadFailuresTest, QApplication)
#include "JobDownloadFailuresTest.moc"
