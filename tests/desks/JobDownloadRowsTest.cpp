// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>

using namespace KODMS::Tests;
using KODMS::UI::Desk;

/// Each selected row of a download: looked up, fetched, unpacked, its folder shown.
class JobDownloadRowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aJobIsFetchedUnpackedAndHandedOver_data() { addDeskRows(); }

    void aJobIsFetchedUnpackedAndHandedOver();

    void theRowsTextsGoToTheServices_data() { addDeskRows(); }

    void theRowsTextsGoToTheServices();

    void aRowIsTakenForAnySelectedCell_data() { addDeskRows(); }

    void aRowIsTakenForAnySelectedCell();

    void rowsAreDoneFromTopToBottom_data() { addDeskRows(); }

    void rowsAreDoneFromTopToBottom();
    void aFileWithoutATypeIsFetchedAsFileAndUnpackedAsZip_data();
    void aFileWithoutATypeIsFetchedAsFileAndUnpackedAsZip();
    void theFirstOfSeveralFlowsGivesTheName();

    void aJobFolderThatIsThereIsUsed_data() { addDeskRows(); }

    void aJobFolderThatIsThereIsUsed();

    void theRootIsJoinedPlainly_data() { addDeskRows(); }

    void theRootIsJoinedPlainly();

    void theRootIsReadForEachRow_data() { addDeskRows(); }

    void theRootIsReadForEachRow();
    void namesAreUnicode();
};

void JobDownloadRowsTest::aJobIsFetchedUnpackedAndHandedOver()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.archivesHold({QStringLiteral("a/b.txt")});
    const OperationDesk window(desk, tgzRows(3));
    downloadRows(world, window, {1});
    QCOMPARE(world.story(), QStringList({Ask}) + wholeRow(2) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow2"))}));
    QCOMPARE(world.content(QStringLiteral("flow2/a/b.txt")), QStringLiteral("a/b.txt"));
    QVERIFY(!world.exists(QStringLiteral("flow2.tgz")));
    const auto box = world.probe.boxes().last();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), window.widget());
}

void JobDownloadRowsTest::theRowsTextsGoToTheServices()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    JobRow row = jobRow(1, QStringLiteral("7z"));
    row.job = QStringLiteral("the job");
    row.file = QStringLiteral("the file");
    row.flow = QStringLiteral("the guid"); // of "the flow"
    const OperationDesk window(desk, {row});
    downloadRows(world, window, {0});
    QCOMPARE(world.story().at(1),
             QStringLiteral("Odbpp_JobFlowBll::select({FlowGUID: the guid}, {})"));
    QCOMPARE(world.story().at(2),
             FetchOperation + QStringLiteral("(\"the flow\", \"the file\", \"7z\")"));
}

void JobDownloadRowsTest::aRowIsTakenForAnySelectedCell()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(3));
    QTableWidget *table = window.table();
    table->setSelectionBehavior(QAbstractItemView::SelectItems);
    table->setRangeSelected({0, 0, 0, 0}, true);
    table->setRangeSelected({2, 15, 2, 15}, true);
    window.setCurrent(1);
    world.agree();
    window.download();
    QCOMPARE(world.story(FetchOperation), QStringList({fetched(1, Tgz), fetched(3, Tgz)}));
}

void JobDownloadRowsTest::rowsAreDoneFromTopToBottom()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(4));
    downloadRows(world, window, {3, 0, 1});
    QCOMPARE(world.story(), QStringList({Ask}) + wholeRow(1) + wholeRow(2) + wholeRow(4) +
                                QStringList({Complete, opened(QStringLiteral("ROOT\\flow4"))}));
}

void JobDownloadRowsTest::aFileWithoutATypeIsFetchedAsFileAndUnpackedAsZip_data()
{
    QTest::addColumn<Desk>("desk");
    QTest::addColumn<QString>("type");
    QTest::newRow("job-flow desk, no type") << Desk::JobFlow << QString();
    QTest::newRow("original-file desk, no type") << Desk::OrigFile << QString();
    QTest::newRow("job-flow desk, file") << Desk::JobFlow << QStringLiteral("file");
    QTest::newRow("original-file desk, file") << Desk::OrigFile << QStringLiteral("file");
}

void JobDownloadRowsTest::aFileWithoutATypeIsFetchedAsFileAndUnpackedAsZip()
{
    QFETCH(Desk, desk);
    QFETCH(QString, type);
    DownloadWorld world;
    const OperationDesk window(desk, {jobRow(1, type)});
    const int typeColumn = desk == Desk::JobFlow ? 16 : 3;
    window.table()->item(0, typeColumn)->setText(type); // the desk shows "file" for none
    FakeServices::instance().forgetCalls();
    downloadRows(world, window, {0});
    QCOMPARE(world.story().mid(2, 2),
             QStringList({fetched(1, QStringLiteral("file")),
                          unpacked(1, QStringLiteral("file"), QStringLiteral("zip"))}));
    QVERIFY(!world.exists(QStringLiteral("flow1.file")));
    QVERIFY(world.exists(QStringLiteral("flow1")));
}

void JobDownloadRowsTest::theFirstOfSeveralFlowsGivesTheName()
{
    DownloadWorld world;
    KODMS::DataLib::Model::Odbpp_JobFlow first;
    first.jobName = "flow8";
    KODMS::DataLib::Model::Odbpp_JobFlow second;
    second.jobName = "flow9";
    FakeServices::instance().jobFlows.once({{first, second}, false});
    const OperationDesk window(Desk::JobFlow, tgzRows(1));
    downloadRows(world, window, {0});
    QCOMPARE(world.story(FetchOperation),
             QStringList({FetchOperation + QStringLiteral("(\"flow8\", \"file1\", \"tgz\")")}));
    QCOMPARE(world.story().last(), opened(QStringLiteral("ROOT\\flow8")));
}

void JobDownloadRowsTest::aJobFolderThatIsThereIsUsed()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.write(QStringLiteral("flow1/mine"), QStringLiteral("kept"));
    const OperationDesk window(desk, tgzRows(1));
    downloadRows(world, window, {0});
    QCOMPARE(world.content(QStringLiteral("flow1/mine")), QStringLiteral("kept"));
    QCOMPARE(world.story(Failed), QStringList());
}

void JobDownloadRowsTest::theRootIsJoinedPlainly()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    QString root = world.root();
    root.chop(1);
    FakeServices::instance().config.downloadDir = root.toStdString();
    const OperationDesk window(desk, tgzRows(1));
    downloadRows(world, window, {0});
    const QStringList story = world.story();
    QCOMPARE(story.at(3), QStringLiteral("DMS_Function::ExtractorFileFromcompressFile(\"%1flow1.tgz"
                                         "\", \"tgz\", \"%1flow1/\")")
                              .arg(root));
    QVERIFY(QFileInfo(root + QStringLiteral("/flow1")).isDir());
    root += QStringLiteral("flow1");
    QCOMPARE(story.last(), opened(root.replace(QLatin1Char('/'), QLatin1Char('\\'))));
}

/// Somebody may set another folder while the first row is fetched.
void JobDownloadRowsTest::theRootIsReadForEachRow()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(2));
    const std::string other = world.root().toStdString() + "other/";
    world.during(FetchOperation, [other] { FakeServices::instance().config.downloadDir = other; });
    downloadRows(world, window, {0, 1});
    const QStringList folders =
        world.story(QStringLiteral("DMS_UICommon")) + world.story(QStringLiteral("started"));
    QCOMPARE(world.story(QStringLiteral("DMS_Function")).first(), unpacked(1, Tgz, Tgz));
    QVERIFY2(folders.last().contains(QStringLiteral("\\other\\flow2")), qPrintable(folders.last()));
}

void JobDownloadRowsTest::namesAreUnicode()
{
    DownloadWorld world;
    world.archivesHold({QStringLiteral("资料/线路.gbr")});
    JobRow row = jobRow(1, Tgz);
    row.flow = QStringLiteral("料号甲");
    row.file = QStringLiteral("存放名");
    const OperationDesk window(Desk::JobFlow, {row});
    downloadRows(world, window, {0});
    QVERIFY(world.exists(QStringLiteral("料号甲/资料/线路.gbr")));
    QCOMPARE(world.story().last(), opened(QStringLiteral("ROOT\\料号甲")));
}

KODMS_TEST_MAIN(JobDownloadRowsTest, QApplication)
#include "JobDownloadRowsTest.moc"
