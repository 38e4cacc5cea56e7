// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/RobotWork.h"

#include "services/api/Intake.h"
#include "services/api/internal/SampleArchive.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/HasFile.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>

using namespace KODMS::Services;
using KODMS::Tests::hasFile;
using KODMS::Tests::TestInstallation;

namespace {

/// Does something once, in the middle of the storing.
class Meanwhile final : public Progress {
public:
    explicit Meanwhile(std::function<void()> step) : m_step(std::move(step)) {}

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        if (m_step)
            std::exchange(m_step, nullptr)();
    }

    bool isCancelled() const override { return false; }

    bool happened() const { return !m_step; }

private:
    std::function<void()> m_step;
};

} // namespace

/// The robot's work as the program does it: records and file store together.
class RobotWorkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void anArchiveIsDeliveredAsItIs();
    void aFolderIsPacked();
    void whatIsNoResultLeavesNothing_data();
    void whatIsNoResultLeavesNothing();
    void aFlowMovedOnMeanwhileKeepsNoFile();
    void whoIsNotTheRobotStoresNothing();
    void nothingRuns();

private:
    int actAsRobot() { return m_home->actAs(QStringLiteral("robot"), {Role::Robot}); }

    QVariant flowValue(const QString &column)
    {
        return m_home->value(QStringLiteral("SELECT %1 FROM job_flows").arg(column));
    }

    QVariant result(const QString &column)
    {
        return m_home->value(
            QStringLiteral("SELECT %1 FROM orig_files WHERE kind = 2").arg(column));
    }

    int storedFiles() { return m_home->store().list().value.size(); }

    void expectNothingStored();

    std::unique_ptr<TestInstallation> m_home;
    RobotJob m_job;
    NoProgress m_progress;
};

void RobotWorkTest::init()
{
    m_home = std::make_unique<TestInstallation>();
    m_home->actAsAdmin();
    const QString kos = m_home->path(QStringLiteral("board.kos"));
    QVERIFY(SampleArchive::write(kos, QStringLiteral("board")));
    IntakeRequest request;
    request.path = kos;
    request.customerCode = QStringLiteral("A1B");
    QVERIFY(Intake::take(request, &m_progress));
    actAsRobot();
    const auto job = RobotWork::take(QStringLiteral("a1b000001"));
    QVERIFY2(job, qPrintable(job.text()));
    m_job = job.value;
}

void RobotWorkTest::cleanup()
{
    m_home.reset();
}

void RobotWorkTest::expectNothingStored()
{
    QCOMPARE(storedFiles(), 1); // what the customer sent
    QVERIFY(!flowValue(QStringLiteral("result_file_id")).isValid());
    QVERIFY(!result(QStringLiteral("id")).isValid());
    QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
}

void RobotWorkTest::anArchiveIsDeliveredAsItIs()
{
    const QString tgz = m_home->path(QStringLiteral("board_7.tgz"));
    QVERIFY(SampleArchive::write(tgz, QStringLiteral("board_7")));
    const Outcome delivered = RobotWork::deliver(m_job, tgz, m_progress);
    QVERIFY2(delivered, qPrintable(delivered.text));
    QCOMPARE(result(QStringLiteral("file_type")).toString(), QStringLiteral("tgz"));
    QCOMPARE(flowValue(QStringLiteral("orig_job_name")).toString(), QStringLiteral("board_7"));
    QCOMPARE(flowValue(QStringLiteral("result_file_id")), result(QStringLiteral("id")));
    const QString copy = m_home->path(QStringLiteral("copy"));
    QVERIFY(
        m_home->store().get(result(QStringLiteral("stored_name")).toString(), copy, m_progress));
    QFile sent(tgz);
    QFile got(copy);
    QVERIFY(sent.open(QIODevice::ReadOnly) && got.open(QIODevice::ReadOnly));
    QCOMPARE(got.readAll(), sent.readAll());
    QVERIFY(RobotWork::unfinished().value.isEmpty());
}

void RobotWorkTest::aFolderIsPacked()
{
    const QString folder = m_home->path(QStringLiteral("board_8"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(KODMS::Tests::writeFile(folder + QStringLiteral("/a.txt"), "a"));
    const Outcome delivered = RobotWork::deliver(m_job, folder, m_progress);
    QVERIFY2(delivered, qPrintable(delivered.text));
    QCOMPARE(result(QStringLiteral("file_type")).toString(), QStringLiteral("zip"));
    QCOMPARE(result(QStringLiteral("base_name")).toString(), QStringLiteral("board_8"));
    QVERIFY(hasFile(m_home->store(), result(QStringLiteral("stored_name")).toString()));
    QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
}

void RobotWorkTest::whatIsNoResultLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing there") << QByteArray();
    QTest::newRow("no archive") << QByteArray("a text");
    QTest::newRow("a damaged archive") << KODMS::Tests::gzipped(QByteArray(4000, 'x')).left(30);
}

void RobotWorkTest::whatIsNoResultLeavesNothing()
{
    QFETCH(QByteArray, content);
    const QString path = m_home->path(QStringLiteral("result.tgz"));
    if (!content.isEmpty())
        QVERIFY(KODMS::Tests::writeFile(path, content));
    const Outcome delivered = RobotWork::deliver(m_job, path, m_progress);
    QVERIFY(!delivered);
    QVERIFY(!delivered.text.isEmpty());
    expectNothingStored();
    QCOMPARE(RobotWork::unfinished().value.size(), 1); // it can be tried again
}

void RobotWorkTest::aFlowMovedOnMeanwhileKeepsNoFile()
{
    const QString tgz = m_home->path(QStringLiteral("board.tgz"));
    QVERIFY(SampleArchive::write(tgz, QStringLiteral("board")));
    Meanwhile meanwhile([this] {
        m_home->database().run(
            QStringLiteral("UPDATE job_flows SET flow_status = 1, check_flag = 0"));
    });
    QVERIFY(!RobotWork::deliver(m_job, tgz, meanwhile));
    QVERIFY(meanwhile.happened());
    expectNothingStored();
    QVERIFY(RobotWork::unfinished().value.isEmpty());
}

void RobotWorkTest::whoIsNotTheRobotStoresNothing()
{
    const QString tgz = m_home->path(QStringLiteral("board.tgz"));
    QVERIFY(SampleArchive::write(tgz, QStringLiteral("board")));
    m_home->actAsAdmin();
    QVERIFY(!RobotWork::deliver(m_job, tgz, m_progress));
    QVERIFY(!RobotWork::take(QStringLiteral("a1b000001")));
    QVERIFY(!RobotWork::unfinished());
    m_home->signOut();
    QVERIFY(!RobotWork::deliver(m_job, tgz, m_progress));
    QVERIFY(!RobotWork::unfinished());
    expectNothingStored();
}

void RobotWorkTest::nothingRuns()
{
    m_home->stop();
    QCOMPARE(RobotWork::deliver(m_job, QStringLiteral("x"), m_progress).ok, false);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no database is open")));
    QCOMPARE(RobotWork::take(QStringLiteral("a")).outcome.ok, false);
}

KODMS_TEST_MAIN(RobotWorkTest, QCoreApplication)
#include "RobotWorkTest.moc"
