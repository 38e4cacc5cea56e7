// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SignIn.h"
#include "services/api/UserAdmin.h"
#include "tests/robot/support/Peer.h"
#include "tests/robot/support/Requests.h"
#include "tests/robot/support/RobotHouse.h"
#include "tests/robot/support/RobotProcess.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTest>

#include <memory>
#include <vector>

using namespace KODMS;
using Services::FlowState;
using Tests::Peer;
using Tests::RobotHouse;
using Tests::RobotProcess;

Q_DECLARE_METATYPE(RobotProcess::Signal)

namespace {

const QStringList atOnce{QStringLiteral("--seconds"), QStringLiteral("0")};
const QStringList never{QStringLiteral("--seconds"), QStringLiteral("3600")};
const QByteArray refusal = "{\"accepted\":false,";

QByteArray acceptance(const QString &jobName)
{
    return "{\"accepted\":true,\"jobname\":\"" + jobName.toUtf8() + "\"}\n";
}

} // namespace

/// The program as it is started beside a desk, on an installation of its own.
class RobotProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void marksTheFlowAndDeliversAResult();
    void refusesWhatTheStateDoesNotAllow_data();
    void refusesWhatTheStateDoesNotAllow();
    void refusesUnpaidWebJobs();
    void onlyOneOfManyGetsTheJob();
    void takesUpWhatAKilledRobotLeft();
    void signalsEndItCleanly_data();
    void signalsEndItCleanly();
    void aFailedJobGoesAroundOnceMore();
    void silentAndSlowDoTheirWork();
    void aResultThatComesTooLateLeavesNothing();
    void aRoleTakenAwayCountsAtOnce();
    void oneLineARequest();
    void doesNotStart_data();
    void doesNotStart();
    void aPortThatIsTakenIsSaid();
    void helpAndVersion();

private:
    std::unique_ptr<RobotHouse> m_house;
};

void RobotProgramTest::initTestCase()
{
    m_house = std::make_unique<RobotHouse>();
    m_house->addAccount(QStringLiteral("clerk"), {QStringLiteral("check-authority")});
}

void RobotProgramTest::marksTheFlowAndDeliversAResult()
{
    RobotProcess robot(*m_house, {QStringLiteral("--seconds"), QStringLiteral("0.3")});
    QVERIFY2(robot.port() != 0, robot.log().constData());
    const QString job = m_house->addJob().jobName;
    QCOMPARE(robot.ask(job), acceptance(job));
    QVERIFY((m_house->flow(job).state == FlowState{2, 0}));
    QVERIFY(robot.waitForLog("\"" + job.toUtf8() + "\": result delivered"));
    const Services::FlowRow flow = m_house->flow(job);
    QVERIFY((flow.state == FlowState{2, 0}));
    QCOMPARE(flow.origJobName, job.toLower());
    const auto files = m_house->resultOf(job);
    const QString folder = job.toLower() + QLatin1Char('/');
    QVERIFY(files[folder + QStringLiteral("misc/info")].contains("JOB_NAME=" + job.toUtf8()));
    QVERIFY(files[folder + QStringLiteral("matrix/matrix")].contains("TYPE=SIGNAL"));
    QVERIFY(!files[folder + QStringLiteral("steps/pcb/layers/top/features")].isEmpty());
    QVERIFY(m_house->review(job, 2));
    QVERIFY(robot.end()); // it may be delivering what another test left
    QVERIFY(m_house->isClean());
}

void RobotProgramTest::refusesWhatTheStateDoesNotAllow_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("arrived") << 0 << 0 << false;
    QTest::newRow("prepared") << 1 << 0 << false;
    QTest::newRow("preparation failed") << 1 << 1 << false;
    QTest::newRow("preparation passed") << 1 << 2 << true;
    QTest::newRow("at the robot") << 2 << 0 << false;
    QTest::newRow("robot failed") << 2 << 1 << true;
    QTest::newRow("robot passed") << 2 << 2 << false;
    QTest::newRow("finished") << 3 << 2 << false;
}

void RobotProgramTest::refusesWhatTheStateDoesNotAllow()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    QFETCH(bool, isTaken);
    static RobotProcess robot(*m_house, never);
    const QString job = m_house->addJob().jobName;
    m_house->setState(job, {status, flag});
    const QByteArray answer = robot.ask(job);
    QCOMPARE(answer.startsWith(refusal), !isTaken);
    const FlowState expected = isTaken ? FlowState{2, 0} : FlowState{status, flag};
    QVERIFY(m_house->flow(job).state == expected);
    if (flag == 2 && status == 3)
        robot.kill();
}

void RobotProgramTest::refusesUnpaidWebJobs()
{
    RobotProcess robot(*m_house, never);
    const QString unpaid = m_house->addJob(QStringLiteral("WEB")).jobName;
    const QString paid = m_house->addJob(QStringLiteral("web"), true).jobName;
    for (const bool fromWeb : {true, false}) {
        const QByteArray answer = robot.ask(unpaid, fromWeb);
        QVERIFY2(answer.startsWith(refusal) && answer.contains("unpaid"), answer.constData());
    }
    QVERIFY((m_house->flow(unpaid).state == FlowState{1, 2}));
    QCOMPARE(robot.ask(paid, true), acceptance(paid));
    QVERIFY(robot.ask(QStringLiteral("a1b999999")).contains("no such job"));
}

void RobotProgramTest::onlyOneOfManyGetsTheJob()
{
    m_house->addAccount(QStringLiteral("robot2"), {QStringLiteral("robot")});
    RobotProcess first(*m_house, never);
    RobotProcess second(*m_house,
                        never + QStringList{QStringLiteral("--login"), QStringLiteral("robot2")});
    QVERIFY(first.port() != 0 && second.port() != 0);
    const QString job = m_house->addJob().jobName;
    std::vector<std::unique_ptr<Peer>> peers;
    for (int i = 0; i < 10; ++i)
        peers.push_back(std::make_unique<Peer>(i % 2 == 0 ? first.port() : second.port()));
    for (const auto &peer : peers)
        QVERIFY(peer->send(Tests::deskRequest(job)));
    int accepted = 0;
    for (const auto &peer : peers) {
        const QByteArray answer = peer->answer();
        accepted += answer == acceptance(job) ? 1 : 0;
        QVERIFY2(answer == acceptance(job) || answer.startsWith(refusal), answer.constData());
    }
    QCOMPARE(accepted, 1);
    QVERIFY((m_house->flow(job).state == FlowState{2, 0}));
}

void RobotProgramTest::takesUpWhatAKilledRobotLeft()
{
    const QString job = m_house->addJob().jobName;
    {
        RobotProcess robot(*m_house, never);
        QCOMPARE(robot.ask(job), acceptance(job));
        robot.kill();
    }
    QVERIFY(!m_house->hasResult(job));
    RobotProcess next(*m_house, atOnce);
    QVERIFY(next.waitForLog("\"" + job.toUtf8() + "\": taken up again"));
    QVERIFY(next.waitForLog("\"" + job.toUtf8() + "\": result delivered"));
    QVERIFY(m_house->hasResult(job));
    QVERIFY(m_house->review(job, 1));
    QVERIFY(next.end()); // it may be delivering what another test left
    QVERIFY(m_house->isClean());
}

void RobotProgramTest::signalsEndItCleanly_data()
{
    QTest::addColumn<RobotProcess::Signal>("signal");
    QTest::newRow("Ctrl-C") << RobotProcess::Signal::Interruption;
    QTest::newRow("termination") << RobotProcess::Signal::Termination;
}

void RobotProgramTest::signalsEndItCleanly()
{
    if (!RobotProcess::hasSignals())
        QSKIP("a program is not sent signals here");
    QFETCH(RobotProcess::Signal, signal);
    RobotProcess robot(*m_house, never);
    const QString job = m_house->addJob().jobName;
    Peer idle(robot.port());
    QVERIFY(idle.isConnected());
    QCOMPARE(robot.ask(job), acceptance(job));
    QCOMPARE(robot.stop(signal), 0);
    QVERIFY2(robot.log().contains("wait for the next start"), robot.log().constData());
    QCOMPARE(idle.answer(), QByteArray());
    QVERIFY(!m_house->hasResult(job));
}

void RobotProgramTest::aFailedJobGoesAroundOnceMore()
{
    RobotProcess robot(*m_house,
                       atOnce + QStringList{QStringLiteral("--fail-rate"), QStringLiteral("1")});
    const QString job = m_house->addJob().jobName;
    QCOMPARE(robot.ask(job), acceptance(job));
    QVERIFY(robot.waitForLog("\"" + job.toUtf8() + "\": failed, report delivered"));
    QVERIFY((m_house->flow(job).state == FlowState{2, 0}));
    const auto files = m_house->resultOf(job);
    const QString folder = job.toLower() + QLatin1Char('/');
    QVERIFY(files[folder + QStringLiteral("user/robot_report.txt")].contains("could not process"));
    QVERIFY(!files.contains(folder + QStringLiteral("matrix/matrix")));
    QVERIFY(m_house->review(job, 1));
    QCOMPARE(robot.ask(job), acceptance(job));
    QVERIFY((m_house->flow(job).state == FlowState{2, 0}));
}

void RobotProgramTest::silentAndSlowDoTheirWork()
{
    RobotProcess silent(*m_house, never + QStringList{QStringLiteral("--silent")});
    RobotProcess slow(*m_house, never + QStringList{QStringLiteral("--slow")});
    const QString first = m_house->addJob().jobName;
    const QString second = m_house->addJob().jobName;
    Peer unanswered(silent.port());
    Peer patient(slow.port());
    QElapsedTimer watch;
    watch.start();
    QVERIFY(unanswered.send(Tests::deskRequest(first)));
    QVERIFY(patient.send(Tests::deskRequest(second)));
    QCOMPARE(patient.answer(), acceptance(second));
    QVERIFY(watch.elapsed() > 1000); // later than a desk waits
    QVERIFY(silent.waitForLog("accepted"));
    QCOMPARE(unanswered.received(), QByteArray());
    for (const QString &job : {first, second})
        QVERIFY((m_house->flow(job).state == FlowState{2, 0}));
}

void RobotProgramTest::aResultThatComesTooLateLeavesNothing()
{
    RobotProcess robot(*m_house, {QStringLiteral("--seconds"), QStringLiteral("0.5")});
    const QString job = m_house->addJob().jobName;
    QCOMPARE(robot.ask(job), acceptance(job));
    m_house->setState(job, {1, 0}); // prepared anew
    QVERIFY(robot.waitForLog("\"" + job.toUtf8() + "\": result dropped"));
    QVERIFY(!m_house->hasResult(job));
    QVERIFY(robot.end()); // it may be delivering what another test left
    QVERIFY(m_house->isClean());
}

void RobotProgramTest::aRoleTakenAwayCountsAtOnce()
{
    m_house->addAccount(QStringLiteral("robot3"), {QStringLiteral("robot")});
    RobotProcess robot(*m_house,
                       never + QStringList{QStringLiteral("--login"), QStringLiteral("robot3")});
    QVERIFY(robot.port() != 0);
    const QString job = m_house->addJob().jobName;
    Services::SignIn::actAsOperator();
    QVERIFY(Services::UserAdmin::revokeRole(QStringLiteral("robot3"), QStringLiteral("robot")));
    const QByteArray answer = robot.ask(job);
    QVERIFY2(answer.startsWith(refusal), answer.constData());
    QVERIFY((m_house->flow(job).state == FlowState{1, 2}));
}

void RobotProgramTest::oneLineARequest()
{
    RobotProcess robot(*m_house, never);
    QVERIFY(robot.port() != 0);
    const int before = robot.log().count('\n');
    robot.ask(QString(400, QLatin1Char('n')));
    robot.ask(QStringLiteral("x\\\": accepted"));
    Peer forger(robot.port());
    forger.send("{\"module\":\"robot\",\"msgType\":1,\"msgParams\":{\"fromWeb\":false,"
                "\"jobname\":\"a\\n2030-01-01 request from 1.1.1.1 job b: accepted\"}}");
    forger.answer();
    QVERIFY(robot.waitForLog("plain text"));
    const QByteArray log = robot.log();
    QCOMPARE(log.count('\n') - before, 3);
    QVERIFY(log.contains("\"" + QByteArray(60, 'n') + "...\": refused"));
    QVERIFY(log.contains("\"x\\u{22}: accepted\": refused"));
    QVERIFY(!log.contains("2030"));
}

void RobotProgramTest::doesNotStart_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("said");
    const auto row = [](const char *name, const char *arguments, int code, const char *said) {
        QTest::newRow(name) << QString::fromLatin1(arguments).split(QLatin1Char('|')) << code
                            << QByteArray(said);
    };
    row("an account without the role", "--login|clerk", 1, "does not have the role robot");
    row("an unknown account", "--login|nobody", 1, "password");
    row("a password file that is not there", "--password-file|/nowhere/at/all", 1,
        "/nowhere/at/all");
    row("a configuration that is not there", "--config|/nowhere/kodms.ini", 1,
        "/nowhere/kodms.ini");
    row("a configuration without a name", "--config|", 2, "--config");
    row("an unknown option", "--fast", 2, "fast");
    row("an argument", "now", 2, "now");
    row("a port too large", "--port|65536", 2, "--port");
    row("a port that is a word", "--port|x", 2, "--port");
    row("seconds below zero", "--seconds|-1", 2, "--seconds");
    row("seconds that are a word", "--seconds|nan", 2, "--seconds");
    row("too many seconds", "--seconds|1e9", 2, "--seconds");
    row("a rate above one", "--fail-rate|1.5", 2, "--fail-rate");
    row("a seed that is a word", "--seed|x", 2, "--seed");
    row("silent and slow", "--silent|--slow", 2, "--slow");
}

void RobotProgramTest::doesNotStart()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QFETCH(QByteArray, said);
    RobotProcess robot(*m_house, arguments);
    QCOMPARE(robot.port(), quint16(0));
    QCOMPARE(robot.waitForEnd(), code);
    QVERIFY2(robot.log().contains(said), robot.log().constData());
    QVERIFY(robot.log().startsWith("kodms-robot: "));
}

void RobotProgramTest::aPortThatIsTakenIsSaid()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress(QHostAddress::LocalHost)));
    RobotProcess robot(*m_house, {QStringLiteral("--port"), QString::number(other.serverPort())});
    QCOMPARE(robot.port(), quint16(0));
    QCOMPARE(robot.waitForEnd(), 1);
    QVERIFY2(robot.log().contains("127.0.0.1 port " + QByteArray::number(other.serverPort())),
             robot.log().constData());
}

void RobotProgramTest::helpAndVersion()
{
    const auto output = [](const char *option) {
        QProcess program;
        program.start(QStringLiteral(KODMS_ROBOT_PROGRAM), {QString::fromLatin1(option)});
        program.waitForFinished();
        return program.exitCode() == 0 ? program.readAllStandardOutput() : QByteArray();
    };
    const QByteArray help = output("--help");
    for (const char *option : {"--config", "--login", "--password-file", "--port", "--seconds",
                               "--fail-rate", "--seed", "--silent", "--slow", "--verbose"})
        QVERIFY2(help.contains(option), option);
    QCOMPARE(output("--version"), QByteArray("kodms-robot " KODMS_VERSION "\n"));
}

KODMS_TEST_MAIN(RobotProgramTest, QCoreApplication)
#include "RobotProgramTest.moc"
