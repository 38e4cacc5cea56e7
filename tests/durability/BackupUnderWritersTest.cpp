// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Backup.h"
#include "services/api/Intake.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/durability/StateHash.h"
#include "tests/durability/WorkerProcess.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QThread>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

constexpr int Backups = KODMS_ROUNDS;
constexpr quint32 Writers = 4;
constexpr unsigned long BetweenMs = 200;
constexpr int Ballast = 4 << 20;
constexpr int BallastFiles = 20;

} // namespace

/// Four programs take in, delete, review, assign and remark without pause, each
/// remembering with every change the hash of the state that it leads to. Whatever
/// a backup taken meanwhile holds must be one of these states, to the byte.
class BackupUnderWritersTest : public QObject {
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
        // Enough to copy that a backup takes a while.
        QVERIFY(writeFile(request.path, rawZip({{"a", QByteArray(Ballast, 'x')}})));
        for (int i = 0; i < BallastFiles; ++i)
            QVERIFY(Intake::take(request));
        makeStateTable(m_home->database());
        rememberState(m_home->database());
    }

    void everyBackupIsOneMoment()
    {
        takeBackups();
        QSet<int> moments;
        for (int i = 0; i < Backups; ++i) {
            const int moment = restoredMoment(i);
            if (QTest::currentTestFailed())
                return;
            moments.insert(moment);
        }
        QCOMPARE(moments.size(), Backups);
    }

private:
    QString backupPath(int number) const
    {
        return m_home->path(QStringLiteral("backup-%1.tar").arg(number));
    }

    void takeBackups()
    {
        std::vector<std::unique_ptr<WorkerProcess>> writers;
        for (quint32 i = 0; i < Writers; ++i) {
            writers.push_back(
                std::make_unique<WorkerProcess>(m_home->iniPath(), QStringLiteral("writers"), i + 1,
                                                m_home->path(QStringLiteral("scratch%1").arg(i))));
            QVERIFY(writers.back()->start() && writers.back()->waitForReady());
        }
        for (int i = 0; i < Backups; ++i) {
            QThread::msleep(BetweenMs);
            const int before = lastEvent(m_home->database());
            const auto summary = Backup::backup(backupPath(i));
            QVERIFY2(summary, qPrintable(summary.outcome.cause));
            m_changesDuring.append(lastEvent(m_home->database()) - before);
        }
        for (const auto &writer : writers) {
            QVERIFY2(writer->finish() && writer->exitCode() == 0, qPrintable(writer->errors()));
            readStored(writer->lines());
        }
    }

    void readStored(const QStringList &lines)
    {
        for (const QString &line : lines) {
            const QStringList words = line.split(QLatin1Char(' '));
            if (line.startsWith(QLatin1String("ok intake ")))
                m_digests.insert(words.value(3), words.value(4).toLatin1());
        }
    }

    /// The audit event after which the original looked like the restored one.
    int restoredMoment(int number)
    {
        const QString ini = m_home->path(QStringLiteral("restored-%1/kodms.ini").arg(number));
        QHash<int, QByteArray> remembered;
        m_home->start();
        const int last = lastEvent(m_home->database());
        for (int event = 0; event <= last; ++event)
            remembered.insert(event, rememberedState(m_home->database(), event));
        m_home->stop();
        const auto restored = Backup::restore(ini, backupPath(number));
        if (!restored || !ServiceRuntime::instance().start(ini))
            qFatal("not restored: %s", qPrintable(restored.outcome.cause));
        const int moment = lastEvent(m_home->database());
        judge(remembered.value(moment));
        const auto files = m_home->store().list().value;
        qInfo("backup %d: event %d of %d, %d changes while it was taken, %d files", number, moment,
              last, m_changesDuring.at(number), files.size());
        m_home->stop();
        return moment;
    }

    void judge(const QByteArray &remembered)
    {
        QVERIFY(!remembered.isEmpty());
        QCOMPARE(stateHash(m_home->database()), remembered);
        SignIn::actAsOperator();
        const auto report = StoreCheck::check({});
        QVERIFY(report);
        for (const CheckFinding &finding : report.value.findings)
            QFAIL(qPrintable(finding.text));
        QCOMPARE(report.value.records, report.value.files);
        for (const StoredFileInfo &file : m_home->store().list().value)
            if (m_digests.contains(file.name))
                QCOMPARE(file.sha256, m_digests.value(file.name));
    }

    std::unique_ptr<TestInstallation> m_home;
    QHash<QString, QByteArray> m_digests; ///< what the writers say they stored
    QVector<int> m_changesDuring;
};

KODMS_TEST_MAIN(BackupUnderWritersTest, QCoreApplication)
#include "BackupUnderWritersTest.moc"
