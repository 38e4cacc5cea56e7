// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/imports/JobImport.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "tests/archive/SampleArchives.h"
#include "tests/imports/support/ImportHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// An import from the disk to store and records: everything or nothing.
class JobImportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<ImportHome>(); }

    void cleanup() { m_home.reset(); }

    void storesAndRecords_data();
    void storesAndRecords();
    void aRobotResultLeavesTheState();
    void whoMayImport_data();
    void whoMayImport();
    void fromWhichState_data();
    void fromWhichState();
    void aFailingRecordLeavesNothing_data();
    void aFailingRecordLeavesNothing();
    void aFailingStoreLeavesNothing();
    void whatChangedSinceItWasShownIsRefused_data();
    void whatChangedSinceItWasShownIsRefused();
    void cancelledLeavesNothing_data();
    void cancelledLeavesNothing();
    void notRecordedIsTakenBack();
    void somebodyElseSignedIn();
    void anotherSessionWasFaster_data();
    void anotherSessionWasFaster();
    void theSameContentIsNoticed();
    void whatIsNoJobIsRefused_data();
    void whatIsNoJobIsRefused();
    void anArchiveBeyondTheLimitIsRefused();

private:
    Outcome import(const QString &path, ImportKind kind = ImportKind::PreparedJob)
    {
        return import(m_home->readBoard(path), kind);
    }

    Outcome import(const ReadJob &read, ImportKind kind = ImportKind::PreparedJob)
    {
        JobImport run(m_home->house.runtime(), m_home->job.flowGuid, kind, read);
        if (Outcome may = run.mayBegin(); !may)
            return may;
        NoProgress progress;
        if (Outcome stored = run.store(progress); !stored)
            return stored;
        return run.record();
    }

    QString importedFile(const QString &column)
    {
        return m_home->house
            .value(QStringLiteral("SELECT o.%1 FROM orig_files o JOIN job_flows f ON o.id = "
                                  "f.last_import_file_id")
                       .arg(column))
            .toString();
    }

    std::unique_ptr<ImportHome> m_home;
};

namespace {

class Cancelled final : public Progress {
public:
    void setTotal(qint64) override {}

    void advance(qint64) override {}

    bool isCancelled() const override { return true; }
};

void expectFailure()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("import(Job|Result)")));
}

const QString boardSummary = QStringLiteral("1,0 [board] 6 layers 550 features by executor");

} // namespace

void JobImportTest::storesAndRecords_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QString>("type");
    QTest::newRow("archive") << false << QStringLiteral("tgz");
    QTest::newRow("folder") << true << QString();
}

void JobImportTest::storesAndRecords()
{
    QFETCH(bool, isFolder);
    QFETCH(QString, type);
    const int user = m_home->actAsExecutor();
    const QString path = isFolder ? m_home->boardFolder() : m_home->boardArchive();
    const Outcome done = import(path);
    QVERIFY2(done.ok, qPrintable(done.text));
    QCOMPARE(m_home->summary(), boardSummary);
    QCOMPARE(importedFile(QStringLiteral("kind")), QStringLiteral("1"));
    QCOMPARE(importedFile(QStringLiteral("file_type")), type);
    QCOMPARE(importedFile(QStringLiteral("base_name")), QStringLiteral("board"));
    QCOMPARE(importedFile(QStringLiteral("customer_code")), QStringLiteral("A1B"));
    QCOMPARE(importedFile(QStringLiteral("create_user_id")), QString::number(user));
    QVERIFY(!m_home->flowValue(QStringLiteral("last_import_time")).isEmpty());
    const QString stored = importedFile(QStringLiteral("stored_name"));
    const QString copy = m_home->house.path(QStringLiteral("copy"));
    NoProgress progress;
    QVERIFY(m_home->house.store().get(stored, copy, progress).ok);
    QCOMPARE(m_home->readBoard(copy).job.featureCount, qint64{550});
    QVERIFY(TestInstallation::entries(m_home->house.staging()).isEmpty());
    const QString events = QStringLiteral("SELECT action || ' ' || after_value FROM events WHERE "
                                          "action LIKE '%.importJob' AND user_id = %1 AND "
                                          "refused = 0 ORDER BY id");
    QCOMPARE(m_home->house.column(events.arg(user)).join(QLatin1Char(',')),
             QStringLiteral("file.importJob %1,state.importJob 1,0").arg(stored));
}

void JobImportTest::aRobotResultLeavesTheState()
{
    m_home->actAsExecutor();
    m_home->setState(2, 2);
    const Outcome done = import(m_home->boardArchive(), ImportKind::RobotResult);
    QVERIFY2(done.ok, qPrintable(done.text));
    QCOMPARE(m_home->summary(), QStringLiteral("2,2 [board] 6 layers 550 features by executor"));
    QCOMPARE(importedFile(QStringLiteral("kind")), QStringLiteral("2"));
    QCOMPARE(m_home->house
                 .value(QStringLiteral("SELECT count(*) FROM events WHERE action = "
                                       "'file.importResult' AND refused = 0"))
                 .toInt(),
             1);
}

void JobImportTest::whoMayImport_data()
{
    QTest::addColumn<QVector<int>>("roles");
    QTest::addColumn<bool>("isExecutor");
    QTest::addColumn<bool>("may");
    const auto one = [](Role role) { return QVector<int>{static_cast<int>(role)}; };
    for (const Role role : allRoles())
        QTest::newRow(qPrintable(roleName(role) + QStringLiteral(", not the executor")))
            << one(role) << false << (role == Role::Admin);
    for (const Role role : allRoles())
        QTest::newRow(qPrintable(roleName(role) + QStringLiteral(" and executor")))
            << one(role) << true << true;
    QTest::newRow("nobody in particular") << QVector<int>{} << false << false;
    QTest::newRow("the executor") << QVector<int>{} << true << true;
    QTest::newRow("pre-process with everything in scope")
        << QVector<int>{static_cast<int>(Role::PreProcess), static_cast<int>(Role::TestAdmin)}
        << false << true;
}

void JobImportTest::whoMayImport()
{
    QFETCH(QVector<int>, roles);
    QFETCH(bool, isExecutor);
    QFETCH(bool, may);
    RoleSet set;
    for (const int role : roles)
        set.insert(static_cast<Role>(role));
    const ReadJob read = m_home->readBoard(m_home->boardArchive());
    for (const ImportKind kind : {ImportKind::PreparedJob, ImportKind::RobotResult}) {
        m_home->setState(2, 2);
        if (isExecutor)
            m_home->actAsExecutor(set);
        else
            m_home->house.actAs(QStringLiteral("somebody"), set);
        const QString before = m_home->stock();
        const NoticeLog notices;
        QCOMPARE(import(read, kind).ok, may);
        QCOMPARE(notices.notices.size(), may ? 0 : 1);
        QCOMPARE(m_home->stock() == before, !may);
        const auto refused = m_home->house.value(QStringLiteral(
            "SELECT count(*) FROM events WHERE refused = 1 AND action LIKE '%.import%'"));
        QCOMPARE(refused.toInt() > 0, !may);
    }
}

void JobImportTest::fromWhichState_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    for (int status = 0; status <= 3; ++status)
        for (int flag = 0; flag <= 2; ++flag)
            QTest::addRow("(%d,%d)", status, flag) << status << flag;
}

void JobImportTest::fromWhichState()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    m_home->actAsExecutor();
    const ReadJob read = m_home->readBoard(m_home->boardArchive());
    m_home->setState(status, flag);
    const bool isFinished = status == 3 && flag == 2;
    const bool isRobotPassed = status == 2 && flag == 2;
    QCOMPARE(import(read, ImportKind::RobotResult).ok, isRobotPassed);
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")).toInt(), status);
    QCOMPARE(import(read, ImportKind::PreparedJob).ok, !isFinished);
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")).toInt(), isFinished ? 3 : 1);
    QCOMPARE(m_home->flowValue(QStringLiteral("check_flag")).toInt(), isFinished ? 2 : 0);
}

void JobImportTest::aFailingRecordLeavesNothing_data()
{
    QTest::addColumn<QString>("when");
    QTest::newRow("the file's record") << QStringLiteral("INSERT ON orig_files");
    QTest::newRow("the flow") << QStringLiteral("UPDATE OF orig_job_name ON job_flows");
    QTest::newRow("the counts") << QStringLiteral("UPDATE OF layer_count ON jobs");
    QTest::newRow("the state") << QStringLiteral("UPDATE OF flow_status ON job_flows");
    QTest::newRow("the audit") << QStringLiteral("INSERT ON events");
    QTest::newRow("the last statement: the desks' log") << QStringLiteral("INSERT ON change_log");
}

void JobImportTest::aFailingRecordLeavesNothing()
{
    QFETCH(QString, when);
    m_home->actAsExecutor();
    const ReadJob read = m_home->readBoard(m_home->boardArchive());
    const QString before = m_home->stock();
    const PlainConnection others(m_home->house.place().settings());
    others.refuse(when, QStringLiteral("broken"));
    const NoticeLog notices;
    expectFailure();
    QVERIFY(!import(read).ok);
    QCOMPARE(notices.notices.size(), 1);
    QCOMPARE(m_home->stock(), before);
    others.allow(when);
    QVERIFY(import(read).ok);
    QCOMPARE(m_home->summary(), boardSummary);
}

void JobImportTest::aFailingStoreLeavesNothing()
{
    m_home->actAsExecutor();
    const ReadJob archive = m_home->readBoard(m_home->boardArchive());
    const ReadJob folder = m_home->readBoard(m_home->boardFolder());
    const QString before = m_home->stock();
    // No place to pack in.
    const QString staging = QDir(m_home->house.staging()).absolutePath();
    QVERIFY(QDir(staging).removeRecursively() && writeFile(staging, "a file"));
    QVERIFY(!import(folder).ok);
    QVERIFY(QFile::remove(staging) && QDir().mkpath(staging));
    QCOMPARE(m_home->stock(), before);
    // No way into the store.
    const QString root = m_home->house.runtime().configuration().fileStore.root;
    const QString aside = root + QStringLiteral(".aside");
    QVERIFY(QDir().rename(root, aside) && writeFile(root, "a file"));
    QVERIFY(!import(archive).ok);
    QVERIFY(QFile::remove(root) && QDir().rename(aside, root));
    QCOMPARE(m_home->stock(), before);
}

void JobImportTest::whatChangedSinceItWasShownIsRefused_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("archive") << false;
    QTest::newRow("folder") << true;
}

void JobImportTest::whatChangedSinceItWasShownIsRefused()
{
    QFETCH(bool, isFolder);
    m_home->actAsExecutor();
    const QString path = isFolder ? m_home->boardFolder() : m_home->boardArchive();
    const ReadJob read = m_home->readBoard(path);
    const QString before = m_home->stock();
    QFile file(isFolder ? path + QStringLiteral("/steps/pcb/layers/l1/features") : path);
    QVERIFY(file.open(QIODevice::Append) && file.write("\n#\n") == 3);
    file.close();
    if (isFolder) {
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("P 1 1 0 P 0 0\n") > 0);
        file.close();
    }
    const Outcome done = import(read);
    QVERIFY(!done.ok);
    QVERIFY2(done.text.contains(QStringLiteral("被修改")), qPrintable(done.text));
    QCOMPARE(m_home->stock(), before);
}

void JobImportTest::cancelledLeavesNothing_data()
{
    whatChangedSinceItWasShownIsRefused_data();
}

void JobImportTest::cancelledLeavesNothing()
{
    QFETCH(bool, isFolder);
    m_home->actAsExecutor();
    const ReadJob read =
        m_home->readBoard(isFolder ? m_home->boardFolder() : m_home->boardArchive());
    const QString before = m_home->stock();
    {
        JobImport run(m_home->house.runtime(), m_home->job.flowGuid, ImportKind::PreparedJob, read);
        Cancelled progress;
        QVERIFY(!run.store(progress).ok);
    }
    QCOMPARE(m_home->stock(), before);
}

void JobImportTest::notRecordedIsTakenBack()
{
    m_home->actAsExecutor();
    const ReadJob read = m_home->readBoard(m_home->boardArchive());
    const QString before = m_home->stock();
    {
        JobImport run(m_home->house.runtime(), m_home->job.flowGuid, ImportKind::PreparedJob, read);
        NoProgress progress;
        QVERIFY(run.store(progress).ok);
        QVERIFY(m_home->stock() != before);
    }
    QCOMPARE(m_home->stock(), before);
}

void JobImportTest::somebodyElseSignedIn()
{
    m_home->actAsExecutor();
    const QString before = m_home->stock();
    {
        JobImport run(m_home->house.runtime(), m_home->job.flowGuid, ImportKind::PreparedJob,
                      m_home->readBoard(m_home->boardArchive()));
        NoProgress progress;
        QVERIFY(run.store(progress).ok);
        m_home->house.actAsAdmin();
        QVERIFY(!run.record().ok);
    }
    QCOMPARE(m_home->stock(), before);
}

void JobImportTest::anotherSessionWasFaster_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("with the file") << QStringLiteral("file_version");
    QTest::newRow("with the state") << QStringLiteral("state_version");
}

void JobImportTest::anotherSessionWasFaster()
{
    QFETCH(QString, version);
    m_home->actAsExecutor();
    std::vector<KODMS::DataLib::Model::DB_Search> conditions;
    std::vector<KODMS::DataLib::Model::DB_Search> more;
    std::vector<KODMS::DataLib::Model::Odbpp_Flow_View> rows;
    int count = 0;
    QVERIFY(KODMS::DataLib::BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(conditions, more,
                                                                                  rows, count));
    QCOMPARE(count, 1);
    const ReadJob read = m_home->readBoard(m_home->boardArchive());
    m_home->house.database().run(QStringLiteral("UPDATE job_flows SET %1 = %1 + 1").arg(version));
    const QString before = m_home->stock();
    const NoticeLog notices;
    QVERIFY(!import(read).ok);
    QCOMPARE(notices.notices.size(), 1);
    QCOMPARE(m_home->stock(), before);
    // Shown again, the import goes through, and so does the next one: its own writes
    // are no surprise.
    QVERIFY(KODMS::DataLib::BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(conditions, more,
                                                                                  rows, count));
    QVERIFY(import(read).ok);
    QVERIFY(import(read).ok);
}

void JobImportTest::theSameContentIsNoticed()
{
    m_home->actAsExecutor();
    const QString archive = m_home->boardArchive();
    const QString folder = m_home->boardFolder();
    const auto sameBefore = [&](const QString &path) {
        JobImport run(m_home->house.runtime(), m_home->job.flowGuid, ImportKind::PreparedJob,
                      m_home->readBoard(path));
        NoProgress progress;
        if (!run.store(progress))
            qFatal("cannot store");
        return run.sameBefore().value;
    };
    QVERIFY(!sameBefore(archive));
    QVERIFY(import(archive).ok);
    QVERIFY(sameBefore(archive));
    QCOMPARE(sameBefore(archive)->realName, QStringLiteral("EXECUTOR"));
    QVERIFY(!sameBefore(folder)); // the same job, other bytes
    QVERIFY(import(folder).ok);
    QVERIFY(sameBefore(folder));
    QVERIFY(sameBefore(archive)); // not only the last one
    QVERIFY(!sameBefore(archive)->isOtherFlow);
    QVERIFY(!sameBefore(m_home->boardArchive(QStringLiteral("other"))));
}

void JobImportTest::whatIsNoJobIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("said");
    QTest::newRow("nothing there") << QStringLiteral("nothing") << QStringLiteral("nothing");
    QTest::newRow("the customer's archive")
        << QStringLiteral("sent.tgz") << QStringLiteral("matrix/matrix");
    QTest::newRow("the CAM product's own") << QStringLiteral("board.kos") << QStringLiteral("kos");
    QTest::newRow("a link") << QStringLiteral("link.tgz") << QStringLiteral("链接");
    QTest::newRow("a text") << QStringLiteral("kodms.ini") << QStringLiteral("压缩包");
}

void JobImportTest::whatIsNoJobIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, said);
    const QString board = m_home->boardArchive();
    QVERIFY(QFile::copy(board, m_home->house.path(QStringLiteral("board.kos"))));
    if (!makeLink(board, m_home->house.path(QStringLiteral("link.tgz"))) &&
        name.startsWith(QLatin1String("link")))
        QSKIP("there are no links here");
    NoProgress progress;
    const auto read = ReadJob::at(m_home->house.path(name), LimitSettings(), progress);
    QVERIFY(!read);
    QVERIFY2(read.text().contains(said), qPrintable(read.text()));
}

/// By its size, before anything in it is read.
void JobImportTest::anArchiveBeyondTheLimitIsRefused()
{
    const QString path = m_home->boardArchive();
    LimitSettings limits;
    limits.archiveBytes = QFileInfo(path).size() - 1;
    NoProgress progress;
    const auto read = ReadJob::at(path, limits, progress);
    QVERIFY(!read);
    QCOMPARE(read.text(), QStringLiteral("文件超过 %1 字节").arg(limits.archiveBytes));
}

KODMS_TEST_MAIN(JobImportTest, QCoreApplication)
#include "JobImportTest.moc"
