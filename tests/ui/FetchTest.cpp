// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Intake.h"
#include "services/records/Transaction.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_StdCommon;
using KODMS::UI::DMS_UICommon;

/// Fetching a stored file into the download folder.
class FetchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void bringsTheFileByStoredName();
    void bringsTheFileByGuid();
    void replacesWhatStoodThere();
    void aDownloadFolderThatWasRemovedIsMadeAgain();
    void aDownloadFolderThatCannotBeMadeIsSaid();
    void neverWritesThroughALink();
    void whoMayHaveIt_data();
    void whoMayHaveIt();
    void aSharedFileIsForWhoeverHasOneOfItsFlows_data();
    void aSharedFileIsForWhoeverHasOneOfItsFlows();
    void waitsForNoWriter();
    void whatWasReplacedIsForAdministrators();
    void aHostileJobNameStaysInside_data();
    void aHostileJobNameStaysInside();
    void aFailureLeavesNothing_data();
    void aFailureLeavesNothing();
    void withoutServicesItSaysSo();

private:
    QString download() const { return m_home->path(QStringLiteral("download")); }

    QString target() const { return download() + QStringLiteral("/job.zip"); }

    void fetch(const QString &jobName, const QString &uuid) const
    {
        DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName(jobName.toStdString(),
                                                            uuid.toStdString(), "zip");
    }

    void assign(int flowId, int executor);

    static QByteArray contentOf(const QString &path);
    static void expectWarning();

    std::unique_ptr<TestInstallation> m_home;
    IntakeReceipt m_job;
    QByteArray m_content;
};

void FetchTest::init()
{
    m_home = std::make_unique<TestInstallation>();
    m_home->actAsAdmin();
    m_content = rawZip({{"top.gbr", "G04"}});
    const QString file = m_home->path(QStringLiteral("sent.zip"));
    QVERIFY(writeFile(file, m_content));
    IntakeRequest request;
    request.path = file;
    request.customerCode = QStringLiteral("A1B");
    const auto receipt = Intake::take(request);
    QVERIFY2(receipt.outcome.ok, qPrintable(receipt.text()));
    m_job = receipt.value;
    QVERIFY(QDir().mkpath(download()));
}

void FetchTest::cleanup()
{
    m_home.reset();
}

QByteArray FetchTest::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
}

void FetchTest::expectWarning()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("file\\.fetch")));
}

void FetchTest::bringsTheFileByStoredName()
{
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(target()), m_content);
}

void FetchTest::bringsTheFileByGuid()
{
    const QString guid = m_home->value(QStringLiteral("SELECT guid FROM orig_files")).toString();
    QVERIFY(!guid.isEmpty());
    fetch(QStringLiteral("job"), guid);
    QCOMPARE(contentOf(target()), m_content);
}

void FetchTest::replacesWhatStoodThere()
{
    QVERIFY(writeFile(target(), "an older file that is much longer than the new one is"));
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(target()), m_content);
}

void FetchTest::aDownloadFolderThatWasRemovedIsMadeAgain()
{
    QVERIFY(QDir(download()).removeRecursively());
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(target()), m_content);
}

void FetchTest::aDownloadFolderThatCannotBeMadeIsSaid()
{
    QVERIFY(QDir(download()).removeRecursively());
    QVERIFY(writeFile(download(), "a file in its place"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    expectWarning();
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(notices.size(), 1);
    QVERIFY(notices.first().at(1).toString().contains(download()));
    QCOMPARE(contentOf(download()), QByteArray("a file in its place"));
}

void FetchTest::neverWritesThroughALink()
{
    const QString precious = m_home->path(QStringLiteral("precious"));
    QVERIFY(writeFile(precious, "precious"));
    QVERIFY(QFile::link(precious, target()));
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(precious), QByteArray("precious"));
    QCOMPARE(contentOf(target()), m_content);
    QVERIFY(!QFileInfo(target()).isSymLink());
}

void FetchTest::whoMayHaveIt_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("isExecutor");
    QTest::addColumn<bool>("may");
    for (const Role role : allRoles()) {
        // The view of original files shows every row to these two.
        const bool seesAll = role == Role::TestAdmin || role == Role::ShowCompanyName;
        QTest::newRow(qPrintable(roleName(role)))
            << static_cast<int>(role) << false << (role == Role::Admin || seesAll);
    }
    QTest::newRow("ordinary user") << -1 << false << false;
    QTest::newRow("executor of the file") << -1 << true << true;
}

void FetchTest::assign(int flowId, int executor)
{
    m_home->database()
        .prepare(QStringLiteral("INSERT INTO orig_file_assign (flow_id, executor_id, "
                                "assign_user_id, assign_time) VALUES (:flow, :user, :user, "
                                "'2026-01-01T00:00:00.000Z')"))
        .bind(":flow", flowId)
        .bind(":user", executor)
        .exec();
}

void FetchTest::whoMayHaveIt()
{
    QFETCH(int, role);
    QFETCH(bool, isExecutor);
    QFETCH(bool, may);
    RoleSet roles;
    if (role >= 0)
        roles.insert(static_cast<Role>(role));
    const int user = m_home->actAs(QStringLiteral("somebody"), roles);
    if (isExecutor)
        assign(m_job.flowId, user);
    QVERIFY(writeFile(target(), "from an earlier fetch"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(QFile::exists(target()), may);
    QCOMPARE(notices.size(), may ? 0 : 1);
    const QString refused =
        QStringLiteral("SELECT count(*) FROM events WHERE action = 'file.fetch' AND refused = 1");
    QCOMPARE(m_home->value(refused).toInt(), may ? 0 : 1);
}

void FetchTest::aSharedFileIsForWhoeverHasOneOfItsFlows_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("as its original file")
        << QStringLiteral("UPDATE job_flows SET orig_file_id = %1 WHERE id = :flow");
    QTest::newRow("as its imported file")
        << QStringLiteral("UPDATE job_flows SET last_import_file_id = %1 WHERE id = :flow");
    QTest::newRow("as its result")
        << QStringLiteral("UPDATE job_flows SET result_file_id = %1 WHERE id = :flow");
    QTest::newRow("in its row of original files")
        << QStringLiteral("UPDATE job_compress SET orig_file_id = %1 WHERE flow_id = :flow");
}

/// The flow that was booked first is not the only one that the file belongs to.
void FetchTest::aSharedFileIsForWhoeverHasOneOfItsFlows()
{
    QFETCH(QString, sql);
    IntakeRequest request;
    request.path = m_home->path(QStringLiteral("sent.zip"));
    request.customerCode = QStringLiteral("A1B");
    const auto second = Intake::take(request);
    QVERIFY(second);
    const QString shared = QStringLiteral("(SELECT orig_file_id FROM job_flows WHERE id = %1)");
    m_home->database()
        .prepare(sql.arg(shared.arg(m_job.flowId)))
        .bind(":flow", second.value.flowId)
        .exec();
    assign(second.value.flowId, m_home->actAs(QStringLiteral("somebody"), {}));
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(target()), m_content);
    m_home->actAs(QStringLiteral("another"), {});
    fetch(QStringLiteral("job"), m_job.storedName);
    QVERIFY(!QFile::exists(target()));
}

/// Nothing is written, so that nobody who writes stands in the way.
void FetchTest::waitsForNoWriter()
{
    const DatabaseSettings settings = m_home->runtime().configuration().database;
    Database other(settings);
    const Transaction writing(other);
    other.run(QStringLiteral("UPDATE job_flows SET tips = 'being written'"));
    fetch(QStringLiteral("job"), m_job.storedName);
    QCOMPARE(contentOf(target()), m_content);
}

/// No flow uses it any more, so that it is in nobody's scope.
void FetchTest::whatWasReplacedIsForAdministrators()
{
    for (const char *table : {"job_flows", "job_compress"})
        m_home->database().run(
            QStringLiteral("UPDATE %1 SET orig_file_id = NULL").arg(QLatin1String(table)));
    m_home->actAs(QStringLiteral("somebody"), {Role::TestAdmin, Role::ShowCompanyName});
    fetch(QStringLiteral("job"), m_job.storedName);
    QVERIFY(!QFile::exists(target()));
    m_home->actAs(QStringLiteral("boss"), {Role::Admin});
    fetch(QStringLiteral("job"), m_job.storedName);
    QVERIFY(QFile::exists(target()));
}

void FetchTest::aHostileJobNameStaysInside_data()
{
    QTest::addColumn<QString>("jobName");
    QTest::newRow("one folder up") << "../outside";
    QTest::newRow("absolute") << "/tmp/outside";
    QTest::newRow("a folder inside") << "inside/outside";
    QTest::newRow("NUL") << QString(QLatin1String("out\0side", 8));
    QTest::newRow("hidden") << ".outside";
    QTest::newRow("1 MB") << QString(1000000, QLatin1Char('x'));
}

void FetchTest::aHostileJobNameStaysInside()
{
    QFETCH(QString, jobName);
    const auto before = treeOf(m_home->path(QString()));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    expectWarning();
    fetch(jobName, m_job.storedName);
    QCOMPARE(notices.size(), 1);
    QVERIFY(treeOf(m_home->path(QString())).keys() == before.keys());
}

void FetchTest::aFailureLeavesNothing_data()
{
    QTest::addColumn<QString>("uuid");
    QTest::newRow("no such file") << "nothing.zip";
    QTest::newRow("empty") << "";
    QTest::newRow("a path") << "../../etc/passwd";
    QTest::newRow("quotes") << "' OR 1 = 1 --";
    QTest::newRow("NUL") << QString(QLatin1String("a\0b", 3));
    QTest::newRow("1 MB") << QString(1000000, QLatin1Char('x'));
    QTest::newRow("stored, but gone from the store") << "gone";
}

void FetchTest::aFailureLeavesNothing()
{
    QFETCH(QString, uuid);
    if (uuid == QLatin1String("gone")) {
        uuid = m_job.storedName;
        QVERIFY(m_home->store().remove(uuid).ok);
    }
    QVERIFY(writeFile(target(), "from an earlier fetch"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    expectWarning();
    fetch(QStringLiteral("job"), uuid);
    QCOMPARE(notices.size(), 1);
    QVERIFY(!QFile::exists(target()));
    QVERIFY(TestInstallation::entries(download()).isEmpty());
}

void FetchTest::withoutServicesItSaysSo()
{
    const QString storedName = m_job.storedName;
    m_home->stop();
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    expectWarning();
    fetch(QStringLiteral("job"), storedName);
    QCOMPARE(notices.size(), 1);
    QCOMPARE(notices.first().first().toInt(), 2);
}

KODMS_TEST_MAIN(FetchTest, QCoreApplication)
#include "FetchTest.moc"
