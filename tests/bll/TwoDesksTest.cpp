// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "services/records/bll/FlowRecords.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/TestMain.h"

#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Tests::TestJob;

namespace {

constexpr int rounds = KODMS_ROUNDS / 2; ///< of each desk

/// One desk in a process of its own: looks at the flow, changes its remark by what
/// it saw, and looks again when somebody else was faster. Prints its successes and
/// refusals.
int runDesk(const QString &place, int userId, int flowId)
{
    Services::DatabaseSettings settings = Tests::TestDatabase::settingsAt(place);
    settings.busyTimeoutMs = 20000;
    Services::RecordContext context(std::make_unique<Services::Database>(settings));
    context.database().run(Tests::TestDatabase::hurry());
    Services::SessionMemory memory;
    context.setShownRecords(&memory);
    context.setActor(Services::UserRecords(context.database()).byId(userId)->actor());
    Services::RecordContext::setCurrent(&context);
    int won = 0;
    int told = 0;
    for (int i = 0; i < rounds; ++i) {
        const auto flow = Services::FlowRecords(context.database()).byId(flowId);
        memory.shown({Services::ShownRow::View::Flow, flowId, flowId, flow->guid, flow->versions});
        const std::string remark = std::to_string(flow->tips.toInt() + 1);
        const bool stored =
            BLL::Odbpp_JobFlowBll().UpdateTips(userId, remark, flow->guid.toStdString());
        (stored ? won : told) += 1;
    }
    std::printf("%d %d\n", won, told);
    return 0;
}

} // namespace

/// Two desks in two processes write the same flow as fast as they can.
class TwoDesksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noUpdateIsLost();
};

void TwoDesksTest::noUpdateIsLost()
{
    Tests::RecordsHome home;
    const TestJob job = home.addJob();
    QProcess desks[2];
    for (int i = 0; i < 2; ++i) {
        const int user = home.addUser(QStringLiteral("desk%1").arg(i), {Role::Admin});
        desks[i].start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--desk"), home.place(), QString::number(user),
                        QString::number(job.flowId)});
    }
    int won = 0;
    int told = 0;
    for (QProcess &desk : desks) {
        QVERIFY(desk.waitForFinished(280000));
        QCOMPARE(desk.exitCode(), 0);
        const QStringList counts =
            QString::fromLatin1(desk.readAllStandardOutput()).trimmed().split(QLatin1Char(' '));
        QCOMPARE(counts.size(), 2);
        won += counts[0].toInt();
        told += counts[1].toInt();
    }
    qInfo() << won << "won," << told << "were told";
    QCOMPARE(won + told, 2 * rounds);
    if (rounds >= 5000) // so many that they must
        QVERIFY2(told > 0, "the desks never met");
    const auto flow = Services::FlowRecords(home.database()).byId(job.flowId);
    QCOMPARE(flow->tips.toInt(), won); // each success added one to what it had seen
    QCOMPARE(flow->versions.remark, won);
    QCOMPARE(home.events(), won);
    QCOMPARE(home.refusals(), told);
}

int main(int argc, char **argv)
{
    Tests::prepareEnvironment();
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("--desk"))
        return runDesk(arguments[2], arguments[3].toInt(), arguments[4].toInt());
    TwoDesksTest test;
    return Tests::runTests(&test, arguments);
}

#include "TwoDesksTest.moc"
