// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/Peer.h"
#include "tests/robot/support/Requests.h"
#include "tests/robot/support/RobotHouse.h"
#include "tests/robot/support/RobotProcess.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <random>

using namespace KODMS;
using Tests::RobotHouse;
using Tests::RobotProcess;

/// kill -9 at any moment between request and result, again and again.
class RobotKillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyJobThatWasTakenGetsOneResult();
};

void RobotKillTest::everyJobThatWasTakenGetsOneResult()
{
    constexpr int rounds = 100;
    const QStringList atOnce{QStringLiteral("--seconds"), QStringLiteral("0")};
    RobotHouse house;
    std::mt19937 random(9);
    QStringList jobs;
    for (int round = 0; round < rounds; ++round) {
        RobotProcess robot(house, atOnce);
        QVERIFY2(robot.port() != 0, robot.log().constData());
        jobs << house.addJob().jobName;
        Tests::Peer peer(robot.port());
        QVERIFY(peer.send(Tests::deskRequest(jobs.last())));
        QTest::qWait(static_cast<int>(random() % 40));
        robot.kill();
    }
    RobotProcess last(house, atOnce);
    QVERIFY(last.port() != 0);
    int taken = 0;
    for (const QString &job : qAsConst(jobs)) {
        const bool wasTaken = house.flow(job).state == Services::FlowState{2, 0};
        taken += wasTaken ? 1 : 0;
        QVERIFY2(house.flow(job).state.status == (wasTaken ? 2 : 1), qPrintable(job));
        if (wasTaken)
            QTRY_VERIFY_WITH_TIMEOUT(house.hasResult(job), 30000);
    }
    QVERIFY(taken > 0);
    const auto results = house.installation().value(QStringLiteral(
        "SELECT count(*) FROM events WHERE action = 'state.robotResult' AND refused = 0"));
    QCOMPARE(results.toInt(), taken);
    QVERIFY(last.end());
    house.repair();
    QVERIFY(house.agrees());
    qInfo("%d kills; %d jobs taken, each with one result", rounds, taken);
}

KODMS_TEST_MAIN(RobotKillTest, QCoreApplication)
#include "RobotKillTest.moc"
