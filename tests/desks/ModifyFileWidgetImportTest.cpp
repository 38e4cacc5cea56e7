// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ModifyFileWorld.h"
#include "tests/desks/RobotPeer.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLineEdit>

using namespace KODMS::Tests;
using KODMS::Fakes::Call;
using KODMS::Fakes::MessageBoxProbe;

/// What the import button stores and records.
class ModifyFileWidgetImportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<ModifyFileWorld>(); }

    void cleanup() { m_world.reset(); }

    void anArchiveIsStoredAndRecorded_data();
    void anArchiveIsStoredAndRecorded();
    void aKosArchiveAlsoMovesTheFlow();
    void aKosArchiveAsksTheRobot();
    void otherArchivesDoNotAskTheRobot_data();
    void otherArchivesDoNotAskTheRobot();
    void otherSuffixesAreRefusedSilently_data();
    void otherSuffixesAreRefusedSilently();
    void aFolderIsPackedAndRecorded();
    void aFolderNamedKosIsAFolder();
    void theTypedNameCounts_data();
    void theTypedNameCounts();
    void theCopyStaysInTheStagingFolder();
    void theStagingFolderIsJoinedPlainly();
    void aRowIdThatIsNoNumberIsZero();

private:
    std::unique_ptr<ModifyFileWorld> m_world;
};

void ModifyFileWidgetImportTest::anArchiveIsStoredAndRecorded_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char *suffix : {"zip", "rar", "tgz"})
        QTest::newRow(suffix) << QString::fromLatin1(suffix);
}

void ModifyFileWidgetImportTest::anArchiveIsStoredAndRecorded()
{
    QFETCH(QString, suffix);
    m_world->choose(m_world->made(QStringLiteral("abc.rev.") + suffix));
    const MessageBoxProbe probe;
    m_world->import();
    const QStringList expected{
        QStringLiteral("Common::getGUID()"),
        QStringLiteral("Common::MongodbPut(\"database\", \"bucket\", \"%1\", \"g1.%2\")")
            .arg(m_world->staged(QStringLiteral("g1.") + suffix), suffix),
        QStringLiteral("Common::getGUID()"),
        QStringLiteral("Odbpp_OrigFilesBll::inputOrigFile(\"g2\", \"abc.rev\", \"g1.%1\", \"%1\", "
                       "\"A1B\", 0, 42)")
            .arg(suffix),
        QStringLiteral("Odbpp_JobFlowBll::UpdateOrigFileGuid(\"g2\", \"flow7\")"),
        QStringLiteral(
            "Odbpp_JobCompressBll::UpdateZipUUID_OrigName(7, \"g1.%1\", 42, \"abc.rev\")")
            .arg(suffix)};
    QCOMPARE(FakeServices::instance().operationLines().join(QLatin1Char('\n')),
             expected.join(QLatin1Char('\n')));
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 1);
    QCOMPARE(probe.count(), 1);
}

void ModifyFileWidgetImportTest::aKosArchiveAlsoMovesTheFlow()
{
    m_world->choose(m_world->made(QStringLiteral("job.kos")));
    const MessageBoxProbe probe;
    m_world->import();
    const QStringList lines = FakeServices::instance().operationLines();
    const QStringList expected{
        QStringLiteral("Odbpp_OrigFilesBll::inputOrigFile(\"g2\", \"job\", \"g1.kos\", \"kos\", "
                       "\"A1B\", 0, 42)"),
        QStringLiteral("Odbpp_JobFlowBll::UpdateOrigFileGuid(\"g2\", \"flow7\")"),
        QStringLiteral("Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid(\"g2\", \"flow7\")"),
        QStringLiteral("Odbpp_JobFlowBll::UpdateState(42, 1, 2, \"flow7\")"),
        QStringLiteral("Odbpp_JobCompressBll::UpdateZipUUID_OrigName(7, \"g1.kos\", 42, \"job\")")};
    QCOMPARE(lines.mid(3).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    QCOMPARE(lines.size(), 8);
}

/// After the flow is ready for it and before the row gets its file: the robot asks
/// for the flow. Nothing is checked before, and a web customer is nothing special.
void ModifyFileWidgetImportTest::aKosArchiveAsksTheRobot()
{
    RobotPeer robot(RobotPeer::Manner::AnswersAtOnce);
    listenAs(robot);
    m_world->window->setData(QStringLiteral("board"), QStringLiteral("rar"),
                             QStringLiteral("old.rar"), QStringLiteral("7"), QStringLiteral("WEB"),
                             QStringLiteral("flow7"), QStringLiteral("000123"));
    m_world->choose(m_world->made(QStringLiteral("job.kos")));
    const MessageBoxProbe probe;
    QStringList before;
    int connectionsBeforeState = -1;
    FakeServices::instance().result("Odbpp_JobFlowBll::UpdateState").compute([&](const Call &) {
        connectionsBeforeState = robot.connections();
        return 1;
    });
    FakeServices::instance()
        .result("Odbpp_JobCompressBll::UpdateZipUUID_OrigName")
        .compute([&](const Call &) {
            before = QStringList(QString::fromUtf8(robot.received()));
            return 1;
        });
    m_world->import();
    QCOMPARE(before.join(QString()), QStringLiteral("{\n"
                                                    "    \"module\": \"robot\",\n"
                                                    "    \"msgParams\": {\n"
                                                    "        \"fromWeb\": false,\n"
                                                    "        \"jobname\": \"web000123\"\n"
                                                    "    },\n"
                                                    "    \"msgType\": 1\n"
                                                    "}\n"));
    QCOMPARE(connectionsBeforeState, 0);
    QCOMPARE(robot.connections(), 1);
    QCOMPARE(FakeServices::instance().count("Odbpp_OrdersBll::getOrdersByFlowGuid"), 0);
    QCOMPARE(probe.count(), 1);
}

void ModifyFileWidgetImportTest::otherArchivesDoNotAskTheRobot_data()
{
    anArchiveIsStoredAndRecorded_data();
    QTest::newRow("a folder") << QString();
}

void ModifyFileWidgetImportTest::otherArchivesDoNotAskTheRobot()
{
    QFETCH(QString, suffix);
    RobotPeer robot(RobotPeer::Manner::AnswersAtOnce);
    listenAs(robot);
    m_world->choose(suffix.isEmpty() ? m_world->madeFolder("job12")
                                     : m_world->made(QStringLiteral("job.") + suffix));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(robot.connections(), 0);
    QCOMPARE(FakeServices::instance().count("Odbpp_JobFlowBll::UpdateState"), 0);
}

void ModifyFileWidgetImportTest::otherSuffixesAreRefusedSilently_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file :
         {"board.tar", "board.ZIP", "board.Kos", "board.7z", "board", "zip", "board.tgz2"})
        QTest::newRow(file) << QString::fromLatin1(file);
#if !defined(Q_OS_WIN) // where such a name is the one without its end
    for (const char *file : {"board.zip.", "board.kos "})
        QTest::newRow(file) << QString::fromLatin1(file);
#endif
}

void ModifyFileWidgetImportTest::otherSuffixesAreRefusedSilently()
{
    QFETCH(QString, file);
    const MessageBoxProbe probe;
    m_world->window->l2rartgzzipSingleImport(QStringLiteral("name"), m_world->made(file));
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(probe.count(), 0);
    if (file.endsWith(QLatin1Char(' ')))
        return; // the dialog would not keep the blank
    m_world->choose(m_world->made(file));
    m_world->import();
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("修改文件成功!")));
}

void ModifyFileWidgetImportTest::aFolderIsPackedAndRecorded()
{
    const QString folder = m_world->madeFolder("out/job12");
    m_world->choose(folder);
    const MessageBoxProbe probe;
    m_world->import();
    const QStringList expected{
        QStringLiteral("Common::FoldersCompressSave2MongoDb(\"%1/\", \"%2\")")
            .arg(folder, m_world->staged(QString())),
        QStringLiteral("Common::getGUID()"),
        QStringLiteral("Odbpp_OrigFilesBll::inputOrigFile(\"g1\", \"job12\", \"packed.zip\", \"\", "
                       "\"A1B\", 0, 42)"),
        QStringLiteral("Odbpp_JobFlowBll::UpdateOrigFileGuid(\"g1\", \"flow7\")"),
        QStringLiteral(
            "Odbpp_JobCompressBll::UpdateZipUUID_OrigName(7, \"packed.zip\", 42, \"job12\")")};
    QCOMPARE(FakeServices::instance().operationLines().join(QLatin1Char('\n')),
             expected.join(QLatin1Char('\n')));
    QCOMPARE(probe.texts(), QStringList(QStringLiteral("修改文件成功!")));
}

void ModifyFileWidgetImportTest::aFolderNamedKosIsAFolder()
{
    m_world->choose(m_world->madeFolder("job.kos.d/x.kos"));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(callNames().first(), QStringLiteral("FoldersCompressSave2MongoDb"));
    QCOMPARE(callNames().size(), 5);
}

void ModifyFileWidgetImportTest::theTypedNameCounts_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QString>("recordedBaseName");
    QTest::newRow("an archive keeps its own name in the file's record")
        << false << QStringLiteral("board");
    QTest::newRow("a folder is recorded under the typed name") << true << QStringLiteral("新名");
}

void ModifyFileWidgetImportTest::theTypedNameCounts()
{
    QFETCH(bool, isFolder);
    QFETCH(QString, recordedBaseName);
    m_world->choose(isFolder ? m_world->madeFolder("board")
                             : m_world->made(QStringLiteral("board.zip")));
    control<QLineEdit>(*m_world->window, "m_pNameLE")->setText(QStringLiteral("新名"));
    const MessageBoxProbe probe;
    m_world->import();
    const auto &services = FakeServices::instance();
    QCOMPARE(services.calls("Odbpp_OrigFilesBll::inputOrigFile").first().arguments.at(1).toString(),
             recordedBaseName);
    QCOMPARE(services.calls("Odbpp_JobCompressBll::UpdateZipUUID_OrigName")
                 .first()
                 .arguments.at(3)
                 .toString(),
             QStringLiteral("新名"));
}

void ModifyFileWidgetImportTest::theCopyStaysInTheStagingFolder()
{
    const QString path = m_world->made(QStringLiteral("board.zip"));
    m_world->choose(path);
    QByteArray atPut;
    FakeServices::instance().result("Common::MongodbPut").compute([&](const Call &call) {
        atPut = contents(call.arguments.at(2).toString());
        return 0;
    });
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(atPut, QByteArray("board.zip"));
    QCOMPARE(contents(m_world->staged(QStringLiteral("g1.zip"))), QByteArray("board.zip"));
    QCOMPARE(contents(path), QByteArray("board.zip"));
}

/// Without a separator at its end the folder's name is the beginning of the file's.
void ModifyFileWidgetImportTest::theStagingFolderIsJoinedPlainly()
{
    FakeServices::instance().config.stagingDir =
        m_world->path(QStringLiteral("stage-")).toStdString();
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(contents(m_world->path(QStringLiteral("stage-g1.zip"))), QByteArray("board.zip"));
}

void ModifyFileWidgetImportTest::aRowIdThatIsNoNumberIsZero()
{
    m_world->window->setData(QString(), QString(), QString(), QStringLiteral("seven"), QString(),
                             QString(), QString());
    m_world->choose(m_world->made(QStringLiteral("board.zip")));
    const MessageBoxProbe probe;
    m_world->import();
    QCOMPARE(FakeServices::instance().operationLines().last(),
             QStringLiteral(
                 "Odbpp_JobCompressBll::UpdateZipUUID_OrigName(0, \"g1.zip\", 42, \"board\")"));
}

KODMS_TEST_MAIN(ModifyFileWidgetImportTest, QApplication)
#include "ModifyFileWidgetImportTest.moc"
