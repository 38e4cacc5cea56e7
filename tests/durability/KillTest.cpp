// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Intake.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "services/records/Transaction.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/durability/Ledger.h"
#include "tests/durability/WorkerProcess.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>
#include <QThread>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

constexpr int Rounds = KODMS_ROUNDS;
constexpr int RoundsPerInstallation = 50;
constexpr int LongestLifeMs = 250;

} // namespace

/// A program that works is killed at any moment, again and again.
class KillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everythingAcknowledgedIsThereAndNothingIsHalf_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        for (int first = 1; first <= Rounds; first += RoundsPerInstallation) {
            const int last = qMin(first + RoundsPerInstallation - 1, Rounds);
            QTest::addRow("kills %d to %d", first, last) << first << last;
        }
    }

    void everythingAcknowledgedIsThereAndNothingIsHalf()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QRandomGenerator random(static_cast<quint32>(20261121 + first));
        prepare();
        for (int round = first; round <= last; ++round) {
            const QStringList lines = killedWorker(random, round % 10 == 0);
            m_ledger.read(lines);
            m_home->start();
            waitForWriters();
            const QStringList differences = m_ledger.differences(*m_home);
            QVERIFY2(differences.isEmpty(), qPrintable(QStringLiteral("kill %1: ").arg(round) +
                                                       differences.join(QLatin1Char('\n')) +
                                                       lines.join(QLatin1Char('\n'))));
            m_unrecorded += checkAndRepair();
            m_ledger.forgetPuts();
            m_home->stop();
        }
        m_acknowledged += m_ledger.acknowledged();
    }

    void cleanupTestCase()
    {
        qInfo("%d kills, %d steps acknowledged and found, %d stored files without a record", Rounds,
              m_acknowledged, m_unrecorded);
        QVERIFY(m_acknowledged > Rounds);
        m_home.reset();
    }

private:
    /// Five jobs that the robot could take, two people to review them.
    void prepare()
    {
        m_home.reset();
        m_home = std::make_unique<TestInstallation>();
        m_ledger = Ledger();
        for (const char *login : {"li", "wang"})
            m_home->actAs(QString::fromLatin1(login), {Role::CheckAuthority});
        m_home->actAsAdmin();
        IntakeRequest request;
        request.path = m_home->path(QStringLiteral("first.kos"));
        request.customerCode = QStringLiteral("K0S");
        QVERIFY(writeFile(request.path, rawZip({{"a", "1"}})));
        for (int i = 0; i < 5; ++i)
            QVERIFY(Intake::take(request));
        m_home->stop();
    }

    QStringList killedWorker(QRandomGenerator &random, bool atStart)
    {
        WorkerProcess worker(m_home->iniPath(), QStringLiteral("steps"), random.generate(),
                             m_home->path(QStringLiteral("scratch")));
        if (!worker.start() || (!atStart && !worker.waitForReady()))
            qFatal("the worker does not start: %s", qPrintable(worker.errors()));
        QThread::usleep(static_cast<unsigned long>(random.bounded(LongestLifeMs * 1000)));
        worker.kill();
        return worker.lines();
    }

    /// A server may still be at work on what the killed program has asked of it.
    void waitForWriters() { const Transaction afterThem(m_home->database()); }

    /// Returns how many stored files had no record yet.
    int checkAndRepair()
    {
        SignIn::actAsOperator();
        CheckOptions repair;
        repair.repair = true;
        const auto found = StoreCheck::check(repair);
        if (!found || !found.value.isClean())
            qFatal("not clean: %s",
                   qPrintable(found ? found.value.findings.first().text : found.text()));
        int unrecorded = 0;
        for (const CheckFinding &finding : found.value.findings) {
            if (finding.kind != QLatin1String("unrecorded-file") || !finding.isRepaired)
                qFatal("unexpected: %s", qPrintable(finding.kind + finding.text));
            ++unrecorded;
        }
        const auto after = StoreCheck::check({});
        if (!after || !after.value.findings.isEmpty())
            qFatal("the repair left something");
        return unrecorded;
    }

    std::unique_ptr<TestInstallation> m_home;
    Ledger m_ledger;
    int m_acknowledged = 0;
    int m_unrecorded = 0;
};

KODMS_TEST_MAIN(KillTest, QCoreApplication)
#include "KillTest.moc"
