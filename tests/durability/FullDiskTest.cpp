// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Intake.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/durability/Ledger.h"
#include "tests/durability/StateHash.h"
#include "tests/durability/WorkerProcess.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

constexpr qint64 Budget = 1 << 20;
constexpr qint64 Step = Budget / KODMS_ROUNDS;

} // namespace

/// The disk fills up at every step of the way: a clear message, everything as it
/// was, nothing acknowledged that is not there.
class FullDiskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        m_home = std::make_unique<TestInstallation>();
        for (const char *login : {"li", "wang"})
            m_home->actAs(QString::fromLatin1(login), {Role::CheckAuthority});
        m_home->actAsAdmin();
        IntakeRequest request;
        request.path = m_home->path(QStringLiteral("first.kos"));
        request.customerCode = QStringLiteral("K0S");
        QVERIFY(writeFile(request.path, rawZip({{"a", "1"}})));
        for (int i = 0; i < 5; ++i)
            QVERIFY(Intake::take(request));
    }

    void whileWorking_data()
    {
        QTest::addColumn<QString>("step");
        for (const char *step : {"put", "intake", "intake-folder", "remark", "verdict", "assign"})
            QTest::newRow(step) << QString::fromLatin1(step);
    }

    void whileWorking()
    {
        QFETCH(QString, step);
        int done = 0;
        int refused = 0;
        for (qint64 budget = 0; budget <= Budget; budget += Step) {
            const bool wasDone = runOnce(step, budget, false);
            if (QTest::currentTestFailed())
                return;
            ++(wasDone ? done : refused);
        }
        qInfo("%s: %d refused, %d done", qPrintable(step), refused, done);
        QVERIFY(done > 0);
        QVERIFY(refused > 0);
    }

    /// Before the program has even opened the installation.
    void whileStarting()
    {
        for (qint64 budget = 0; budget <= Budget / 4; budget += Step) {
            runOnce(QStringLiteral("remark"), budget, true);
            if (QTest::currentTestFailed())
                return;
        }
    }

private:
    bool runOnce(const QString &step, qint64 budget, bool fromStart)
    {
        const QByteArray before = stateHash(m_home->database());
        const auto files = m_home->store().list().value.size();
        m_home->stop();
        const QString scratch = m_scratch.filePath(step);
        WorkerProcess worker(m_home->iniPath(), QStringLiteral("once"),
                             static_cast<quint32>(budget), scratch, step);
        worker.setFullDisk(QFileInfo(m_home->iniPath()).path(), budget, fromStart);
        const bool ran = worker.start() && worker.finish() && worker.endedByItself();
        const QStringList lines = worker.lines();
        const QString last = lines.isEmpty() ? QString() : lines.last();
        const QString where =
            QStringLiteral("%1 at %2: %3\n%4").arg(step).arg(budget).arg(last, worker.errors());
        m_home->start();
        SignIn::actAsOperator();
        const bool isDone = last.startsWith(QLatin1String("ok "));
        judge(ran, last, where);
        // A program that cannot even start names what it could not open.
        const bool isClear =
            last.contains(QStringLiteral("磁盘")) ||
            (fromStart && last.contains(m_home->iniPath().section(QLatin1Char('/'), 0, -2)));
        if (!isDone && !isClear)
            QTest::qFail(qPrintable(where), __FILE__, __LINE__);
        const bool isUnchanged =
            stateHash(m_home->database()) == before && m_home->store().list().value.size() == files;
        if (isDone == isUnchanged)
            QTest::qFail(qPrintable(QStringLiteral("old state or done: ") + where), __FILE__,
                         __LINE__);
        return isDone;
    }

    void judge(bool ran, const QString &last, const QString &where)
    {
        QVERIFY2(ran, qPrintable(where));
        Ledger ledger;
        ledger.read({last});
        QVERIFY2(ledger.differences(*m_home).isEmpty(), qPrintable(where));
        const auto report = StoreCheck::check({});
        QVERIFY2(report && report.value.isClean(), qPrintable(where));
        for (const CheckFinding &finding : report.value.findings)
            QVERIFY2(finding.kind == QLatin1String("unrecorded-file"),
                     qPrintable(finding.text + where));
        QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
    }

    QTemporaryDir m_scratch;
    std::unique_ptr<TestInstallation> m_home;
};

KODMS_TEST_MAIN(FullDiskTest, QCoreApplication)
#include "FullDiskTest.moc"
