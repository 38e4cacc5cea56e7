// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>

using namespace KODMS::Tests;
using KODMS::UI::Desk;

/// What of a downloaded job is handed to the CAM side, and to whom it is told.
class JobDownloadHandOverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void whatIsHandedOver_data();
    void whatIsHandedOver();
    void theKindOfAJobFlow_data();
    void theKindOfAJobFlow();
    void theKindOfAnOriginalFile_data();
    void theKindOfAnOriginalFile();

    void anEarlierJobFileIsNotHandedOver_data() { addDeskRows(); }

    void anEarlierJobFileIsNotHandedOver();

    void aKeptArchiveIsAJobFileByItsName_data() { addDeskRows(); }

    void aKeptArchiveIsAJobFileByItsName();

    void theArchiveIsGoneBeforeAnythingIsHandedOver_data() { addDeskRows(); }

    void theArchiveIsGoneBeforeAnythingIsHandedOver();
    void aJobFileIsLookedForAfterTheParameters();
    void theHostHearsOfWebItemsAfterTheirHandOver();
    void theHostHearsOfNothingElse_data();
    void theHostHearsOfNothingElse();
    void aWebItemThatFailedIsNotTold();
    void theJobFlowDeskTellsNobody();
};

namespace {

QString imported(const QString &path)
{
    return QStringLiteral("DMS_UICommon::importNewJob(\"ROOT/%1\", \"flow1\")").arg(path);
}

QString input(const QString &path)
{
    return QStringLiteral("DMS_UICommon::inputNewJob(\"flow1\", \"ROOT/%1\")").arg(path);
}

/// The story between unpacking and the end.
QStringList handOver(const DownloadWorld &world)
{
    const QStringList story = world.story();
    const int unpacking = story.indexOf(story.filter(QStringLiteral("Extractor")).value(0));
    return story.mid(unpacking + 1, story.indexOf(Complete) - unpacking - 1);
}

QString newWebItem(int number)
{
    return QStringLiteral("newWebItem(\"flow%1\")").arg(number);
}

JobRow webRow(int number, const QString &origin)
{
    JobRow row = jobRow(number, Zip);
    row.origin = origin;
    return row;
}

} // namespace

void JobDownloadHandOverTest::whatIsHandedOver_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("archive");
    QTest::addColumn<QString>("parameters");
    QTest::addColumn<QStringList>("expected");
    const QString asked = parametersOf(1);
    const QString layers = QStringLiteral("board1/layer/");
    const auto row = [](const char *name, const QString &type, const QStringList &archive,
                        const QString &parameters, const QStringList &expected) {
        QTest::newRow(name) << type << archive << parameters << expected;
    };
    row("tgz: the folder", Tgz, {QStringLiteral("a")}, {}, {asked, input(QStringLiteral("flow1"))});
    row("tgz: the folder, with parameters", Tgz, {QStringLiteral("a")}, QStringLiteral("p=1|q"),
        {asked, input(QStringLiteral("flow1|p=1|q"))});
    row("tgz: a job file", Tgz, {QStringLiteral("J.TGZ")}, {},
        {asked, imported(QStringLiteral("flow1/J.TGZ"))});
    row("tgz: a job file, with parameters", Tgz, {QStringLiteral("j.tar.gz")}, QStringLiteral("p"),
        {asked, imported(QStringLiteral("flow1/j.tar.gz|p"))});
    row("tgz: a job file further down does not count", Tgz, {QStringLiteral("sub/j.tgz")}, {},
        {asked, input(QStringLiteral("flow1"))});
    row("tgz: layers do not count", Tgz, {layers + QStringLiteral("l.tgz")}, {},
        {asked, input(QStringLiteral("flow1"))});
    row("zip: no layers, nothing", Zip, {QStringLiteral("j.tgz")}, QStringLiteral("p"), {});
    row("zip: a file named layer is none", Zip, {QStringLiteral("board1/layer")}, {}, {});
    row("zip: another job's layers", Zip, {QStringLiteral("board2/layer/")}, {}, {});
    row("zip: empty layers", Zip, {layers}, QStringLiteral("p"),
        {input(QStringLiteral("flow1/board1/layer"))});
    row("zip: layers", Zip, {layers + QStringLiteral("top.gbr")}, {},
        {input(QStringLiteral("flow1/board1/layer"))});
    row("zip: a job file among the layers", Zip, {layers + QStringLiteral("x.tgz")},
        QStringLiteral("p"), {imported(QStringLiteral("flow1/board1/layerboard1.tgz"))});
    row("no type: layers, as of a zip", QStringLiteral("file"), {layers}, {},
        {input(QStringLiteral("flow1/board1/layer"))});
}

void JobDownloadHandOverTest::whatIsHandedOver()
{
    QFETCH(QString, type);
    QFETCH(QStringList, archive);
    QFETCH(QString, parameters);
    QFETCH(QStringList, expected);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        DownloadWorld world;
        world.archivesHold(archive);
        FakeServices::instance().robotParameters.always(parameters.toStdString());
        const OperationDesk window(desk, {jobRow(1, type)});
        downloadRows(world, window, {0});
        QCOMPARE(handOver(world), expected);
    }
}

/// A job flow is asked in the columns of original name and upload time.
void JobDownloadHandOverTest::theKindOfAJobFlow_data()
{
    QTest::addColumn<QString>("origin");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isTgz");
    const QString none;
    QTest::newRow("zip") << none << none << Zip << false;
    QTest::newRow("tgz by its type") << none << none << Tgz << true;
    QTest::newRow("capital type") << none << none << QStringLiteral("TGZ") << false;
    QTest::newRow("web by its original name") << QStringLiteral("WeB") << none << Zip << true;
    QTest::newRow("web only at the start") << QStringLiteral("web1") << none << Zip << false;
    QTest::newRow("tgz by its upload time") << none << QStringLiteral("TgZ") << Zip << true;
    QTest::newRow("an upload time") << none << QStringLiteral("2024-05-01") << Zip << false;
}

void JobDownloadHandOverTest::theKindOfAJobFlow()
{
    QFETCH(QString, origin);
    QFETCH(QString, archive);
    QFETCH(QString, type);
    QFETCH(bool, isTgz);
    DownloadWorld world;
    JobRow row = jobRow(1, type);
    row.origin = origin;
    row.archive = archive;
    const OperationDesk window(Desk::JobFlow, {row});
    downloadRows(world, window, {0});
    QCOMPARE(world.story(parametersOf(1)).size(), isTgz ? 1 : 0);
}

void JobDownloadHandOverTest::theKindOfAnOriginalFile_data()
{
    QTest::addColumn<QString>("origin");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isTgz");
    const QString customer = QStringLiteral("A1B");
    QTest::newRow("zip") << customer << Zip << false;
    QTest::newRow("tgz") << customer << Tgz << true;
    QTest::newRow("capital TGZ") << customer << QStringLiteral("TGZ") << true;
    QTest::newRow("rar of a web customer")
        << QStringLiteral("WEB") << QStringLiteral("rar") << true;
    QTest::newRow("nearly tgz") << customer << QStringLiteral("tgz2") << false;
}

void JobDownloadHandOverTest::theKindOfAnOriginalFile()
{
    QFETCH(QString, origin);
    QFETCH(QString, type);
    QFETCH(bool, isTgz);
    DownloadWorld world;
    JobRow row = jobRow(1, type);
    row.origin = origin;
    const OperationDesk window(Desk::OrigFile, {row});
    downloadRows(world, window, {0});
    QCOMPARE(world.story(parametersOf(1)).size(), isTgz ? 1 : 0);
    QCOMPARE(world.story(FetchOperation), QStringList({fetched(1, type)}));
}

void JobDownloadHandOverTest::anEarlierJobFileIsNotHandedOver()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, tgzRows(2));
    world.archivesHold({QStringLiteral("j.tgz")});
    downloadRows(world, window, {0});
    window.table()->clearSelection();
    world.archivesHold({QStringLiteral("plain")});
    downloadRows(world, window, {1});
    QCOMPARE(world.story(QStringLiteral("DMS_UICommon")),
             QStringList({imported(QStringLiteral("flow1/j.tgz")), folderHandedOver(2)}));
}

/// It was not unpacked; its name says that the CAM side can.
void JobDownloadHandOverTest::aKeptArchiveIsAJobFileByItsName()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    world.unpackingFails(QStringLiteral("flow1"), -1);
    JobRow row = jobRow(1, Tgz);
    row.file = QStringLiteral("f00.tgz");
    const OperationDesk window(desk, {row});
    downloadRows(world, window, {0});
    QCOMPARE(handOver(world),
             QStringList({parametersOf(1), imported(QStringLiteral("flow1/f00.tgz"))}));
}

/// Whoever takes the folder may look around beside it.
void JobDownloadHandOverTest::theArchiveIsGoneBeforeAnythingIsHandedOver()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    int looks = 0;
    const auto look = [&world, &looks] {
        ++looks;
        QVERIFY(!world.exists(QStringLiteral("flow1.tgz")));
    };
    world.during(QStringLiteral("DBS_API::getWebRobotParaByJobName"), look);
    world.during(QStringLiteral("DMS_UICommon::inputNewJob"), look);
    const OperationDesk window(desk, tgzRows(1));
    downloadRows(world, window, {0});
    QCOMPARE(looks, 2);
}

void JobDownloadHandOverTest::aJobFileIsLookedForAfterTheParameters()
{
    DownloadWorld world;
    world.during(QStringLiteral("DBS_API::getWebRobotParaByJobName"),
                 [&world] { world.write(QStringLiteral("flow1/late.tgz"), {}); });
    const OperationDesk window(Desk::OrigFile, tgzRows(1));
    downloadRows(world, window, {0});
    QCOMPARE(handOver(world),
             QStringList({parametersOf(1), imported(QStringLiteral("flow1/late.tgz"))}));
}

void JobDownloadHandOverTest::theHostHearsOfWebItemsAfterTheirHandOver()
{
    DownloadWorld world;
    const QString lower = QStringLiteral("web");
    QVector<JobRow> rows = {webRow(1, lower), jobRow(2, Tgz), webRow(3, QStringLiteral("WEB"))};
    rows[0].type = Tgz;
    rows[0].file = QStringLiteral("file1.tgz");
    rows[2].type = Tgz;
    const OperationDesk window(Desk::OrigFile, rows);
    world.listenTo(window.origFile());
    downloadRows(world, window, {0, 1, 2});
    const QStringList told = world.story().filter(
        QRegularExpression(QStringLiteral("^(DMS_UICommon|newWebItem|DMS_Function|box)")));
    QCOMPARE(told.size(), 10);
    QCOMPARE(told.mid(2, 2), QStringList({folderHandedOver(1), newWebItem(1)}));
    QVERIFY(told.at(4).startsWith(QStringLiteral("DMS_Function")));
    QCOMPARE(told.at(5), folderHandedOver(2));
    QVERIFY(told.at(6).startsWith(QStringLiteral("DMS_Function")));
    QCOMPARE(told.mid(7), QStringList({folderHandedOver(3), newWebItem(3), Complete}));
}

void JobDownloadHandOverTest::theHostHearsOfNothingElse_data()
{
    QTest::addColumn<QString>("origin");
    for (const char *origin : {"", "A1B", "web1", " web"})
        QTest::addRow("\"%s\"", origin) << QString::fromLatin1(origin);
}

void JobDownloadHandOverTest::theHostHearsOfNothingElse()
{
    QFETCH(QString, origin);
    DownloadWorld world;
    JobRow row = jobRow(1, Tgz);
    row.origin = origin;
    const OperationDesk window(Desk::OrigFile, {row});
    world.listenTo(window.origFile());
    downloadRows(world, window, {0});
    QCOMPARE(world.story(QStringLiteral("DMS_UICommon")), QStringList({folderHandedOver(1)}));
    QCOMPARE(world.story(QStringLiteral("newWebItem")), QStringList());
}

void JobDownloadHandOverTest::aWebItemThatFailedIsNotTold()
{
    DownloadWorld world;
    world.fetchingFails(QStringLiteral("flow1"));
    const OperationDesk window(Desk::OrigFile, {webRow(1, QStringLiteral("Web"))});
    world.listenTo(window.origFile());
    downloadRows(world, window, {0});
    QCOMPARE(world.story(Failed).size(), 1);
    QCOMPARE(world.story(QStringLiteral("newWebItem")), QStringList());
}

void JobDownloadHandOverTest::theJobFlowDeskTellsNobody()
{
    DownloadWorld world;
    const OperationDesk window(Desk::JobFlow, {webRow(1, QStringLiteral("WEB"))});
    QSignalSpy exported(window.jobFlow(), &KODMS::UI::DMS_Export_Widget::emitExportJobInfo);
    downloadRows(world, window, {0});
    QCOMPARE(handOver(world), QStringList({parametersOf(1), input(QStringLiteral("flow1"))}));
    QCOMPARE(exported.count(), 0);
}

KODMS_TEST_MAIN(JobDownloadHandOverTest, QApplication)
#include "JobDownloadHandOverTest.moc"
