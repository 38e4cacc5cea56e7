// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ServiceRuntime.h"

#include "services/api/ComponentVersions.h"
#include "services/api/SignIn.h"
#include "services/records/Database.h"
#include "services/records/StoredFiles.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/support/HasFile.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::hasFile;
using KODMS::Tests::Installation;
using KODMS::Tests::NoticeLog;

/// Starting and stopping, and every way in which an installation cannot be opened.
class ServiceRuntimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<Installation>(); }

    void cleanup() { m_home.reset(); }

    void startsAndStops();
    void saysNothingWhenNothingRuns();
    void startsOnceOnly();
    void withoutAnInstallationItNamesTheWayOut();
    void aBadConfigurationIsTold_data();
    void aBadConfigurationIsTold();
    void aDamagedDatabaseIsTold_data();
    void aDamagedDatabaseIsTold();
    void aNewerDatabaseIsRefused();
    void aDatabaseThatIsNotOursIsRefused();
    void anEmptyDatabaseIsRefused();
    void afterAFailureAGoodStartWorks();
    void oddPathsAreNoticed();
    void makesTheFoldersThatTheDesksNeed();
    void settlesDeleteMarks();
    void keepsDeleteMarksWhileTheStoreIsAway();
    void aBodyThatAnotherProgramRemoved();
    void theChangeLogDoesNotGrowForEver();
    void aChangeLogOfAnotherServerIsBegunAnew();
    void aFolderThatCannotBeMadeIsNoticed();
    void namesEveryLibraryBehindIt();

private:
    static int deleteMarks()
    {
        SqlQuery marks = Runtime::current()->records().database().prepare(
            QStringLiteral("SELECT count(*) AS marks FROM file_delete_marks"));
        return marks.exec().next() ? marks.number("marks") : -1;
    }

    static ServiceRuntime &runtime() { return ServiceRuntime::instance(); }

    void write(const QString &path, const QByteArray &bytes, qint64 at = -1)
    {
        QFile file(path);
        QVERIFY(file.open(at < 0 ? QIODevice::WriteOnly : QIODevice::ReadWrite));
        QVERIFY(file.seek(std::max<qint64>(at, 0)));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }

    void runSql(const QString &sql)
    {
        const auto configuration = Configuration::load(m_home->iniPath());
        Database(configuration.value.database).run(sql);
    }

    /// One warning in the log, and the text for people.
    QString failedStart(const char *logged = nullptr)
    {
        if (logged)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(logged)));
        const Outcome outcome = runtime().start(m_home->iniPath());
        return outcome ? QString() : outcome.text;
    }

    std::unique_ptr<Installation> m_home;
};

void ServiceRuntimeTest::startsAndStops()
{
    m_home->initAndStart();
    QVERIFY(runtime().isRunning());
    QCOMPARE(runtime().configPath(), m_home->iniPath());
    QVERIFY(runtime().databaseText().endsWith(QDir::toNativeSeparators(m_home->databaseName())));
    QVERIFY(!runtime().fileStoreText().isEmpty());
    QVERIFY(runtime().schemaVersion() >= 1);
    QVERIFY(!runtime().isSample());
    QVERIFY(RecordContext::current());
    runtime().stop();
    QVERIFY(!runtime().isRunning());
    QVERIFY(!RecordContext::current());
    QVERIFY(runtime().start(m_home->iniPath()));
}

void ServiceRuntimeTest::saysNothingWhenNothingRuns()
{
    runtime().stop();
    QVERIFY(runtime().configPath().isEmpty());
    QVERIFY(runtime().databaseText().isEmpty());
    QVERIFY(runtime().fileStoreText().isEmpty());
    QVERIFY(runtime().configurationNotices().isEmpty());
    QCOMPARE(runtime().schemaVersion(), 0);
    QCOMPARE(SignIn::current().id, 0);
    QVERIFY(!SignIn::signIn(QStringLiteral("boss"), Installation::password()));
}

void ServiceRuntimeTest::startsOnceOnly()
{
    m_home->initAndStart();
    QVERIFY(!runtime().start(m_home->iniPath()));
    QVERIFY(runtime().isRunning());
}

void ServiceRuntimeTest::withoutAnInstallationItNamesTheWayOut()
{
    const Outcome first = runtime().start();
    QVERIFY(!first);
    QVERIFY2(first.text.contains(QStringLiteral("kodms-admin init")), qPrintable(first.text));
#if !defined(Q_OS_WIN) // where the user's folders cannot be moved
    QVERIFY(QFile::exists(m_home->path("config/kodms/kodms.ini")));
    QVERIFY(!QFile::exists(m_home->path("data/kodms/kodms.db")));
#endif
}

void ServiceRuntimeTest::aBadConfigurationIsTold_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("named");
    QTest::newRow("bad port") << QByteArray("[robot]\nport = x\n") << "[robot] port";
    QTest::newRow("unknown store") << QByteArray("[fileStore]\nkind = tape\n") << "tape";
    QTest::newRow("rubbish") << QByteArray("\x01\x02") << "kodms.ini";
}

void ServiceRuntimeTest::aBadConfigurationIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, named);
    write(m_home->iniPath(), text);
    QVERIFY2(failedStart().contains(named), qPrintable(named));
    QVERIFY(!runtime().isRunning());
}

void ServiceRuntimeTest::aDamagedDatabaseIsTold_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("statement"); // what becomes of a server's
    if (KODMS::Tests::TestDatabase::isServer()) {
        QTest::newRow("versions of another shape")
            << -1 << QStringLiteral("ALTER TABLE schema_version RENAME COLUMN version TO edition");
        QTest::newRow("a table is gone") << -1 << QStringLiteral("DROP TABLE file_delete_marks");
        return;
    }
    QTest::newRow("text in its place") << 0 << QString();
    QTest::newRow("damaged first page") << 1 << QString();
    QTest::newRow("a folder in its place") << 2 << QString();
}

void ServiceRuntimeTest::aDamagedDatabaseIsTold()
{
    QFETCH(int, kind);
    QFETCH(QString, statement);
    QVERIFY(m_home->init());
    const QString path = m_home->path("kodms.db");
    if (!statement.isEmpty()) {
        runSql(statement);
    } else if (kind == 0) {
        write(path, "this is no database, and it is longer than a header would be ..........."
                    "................................................................");
    } else if (kind == 1) {
        write(path, QByteArray(400, '\xa5'), 90);
    } else {
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path));
    }
    const QString text = failedStart("open database|upgrade schema|settle delete marks");
    QVERIFY(!text.isEmpty());
    QVERIFY(!runtime().isRunning());
}

void ServiceRuntimeTest::aNewerDatabaseIsRefused()
{
    QVERIFY(m_home->init());
    runSql(QStringLiteral("INSERT INTO schema_version (version, applied_time) VALUES (9999, '')"));
    const QString text = failedStart();
    QVERIFY2(text.contains(QStringLiteral("9999")), qPrintable(text));
}

void ServiceRuntimeTest::aDatabaseThatIsNotOursIsRefused()
{
    QVERIFY(m_home->init());
    runSql(QStringLiteral("ALTER TABLE schema_version RENAME TO something_else"));
    QVERIFY(!failedStart().isEmpty());
}

void ServiceRuntimeTest::anEmptyDatabaseIsRefused()
{
    if (!KODMS::Tests::TestDatabase::isServer()) {
        write(m_home->iniPath(), "");
        write(m_home->path("kodms.db"), "");
    }
    QVERIFY(!failedStart().isEmpty());
}

void ServiceRuntimeTest::afterAFailureAGoodStartWorks()
{
    QVERIFY(!failedStart().isEmpty());
    m_home->initAndStart();
    QVERIFY(runtime().isRunning());
}

void ServiceRuntimeTest::oddPathsAreNoticed()
{
    QVERIFY(m_home->init());
    m_home->writeIni(
        QStringLiteral("[paths]\nstaging = %1\n[fun]\nx = 1\n").arg(m_home->path("in")).toUtf8());
    NoticeLog log;
    QVERIFY(runtime().start(m_home->iniPath()));
    QCOMPARE(log.notices.size(), 2);
    QVERIFY(log.notices[1].text.contains(QStringLiteral("staging")));
    QCOMPARE(log.notices[1].level, int(NoticeLevel::Warning));
    QCOMPARE(runtime().configurationNotices().size(), 2);
}

void ServiceRuntimeTest::makesTheFoldersThatTheDesksNeed()
{
    QVERIFY(m_home->init());
    QVERIFY(QDir(m_home->path("download")).removeRecursively());
    QVERIFY(runtime().start(m_home->iniPath()));
    QVERIFY(QDir(m_home->path("download")).exists());
    QVERIFY(QDir(m_home->path("staging")).exists());
}

void ServiceRuntimeTest::settlesDeleteMarks()
{
    m_home->initAndStart();
    NoProgress progress;
    FileStore &store = Runtime::current()->fileStore();
    QVERIFY(store.put(m_home->iniPath(), QStringLiteral("marked.zip"), progress));
    QVERIFY(store.put(m_home->iniPath(), QStringLiteral("gone.zip"), progress));
    runtime().stop();
    runSql(
        QStringLiteral("INSERT INTO file_delete_marks (stored_name, final, mark_time) "
                       "VALUES ('marked.zip', 0, ''), ('gone.zip', 1, ''), ('never.zip', 1, '')"));
    QVERIFY(runtime().start(m_home->iniPath()));
    FileStore &reopened = Runtime::current()->fileStore();
    QVERIFY(hasFile(reopened, QStringLiteral("marked.zip")));
    QVERIFY(!hasFile(reopened, QStringLiteral("gone.zip")));
    QCOMPARE(deleteMarks(), 0);
}

/// As when the disk with the files is not mounted.
void ServiceRuntimeTest::keepsDeleteMarksWhileTheStoreIsAway()
{
    m_home->initAndStart();
    NoProgress progress;
    QVERIFY(Runtime::current()->fileStore().put(m_home->iniPath(), QStringLiteral("gone.zip"),
                                                progress));
    const QString root = Runtime::current()->configuration().fileStore.root;
    runtime().stop();
    runSql(QStringLiteral("INSERT INTO file_delete_marks (stored_name, final, mark_time) "
                          "VALUES ('gone.zip', 1, '')"));
    const QString away = root + QStringLiteral(".away");
    QVERIFY(QDir().rename(root, away));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("gone.zip")));
    QVERIFY(runtime().start(m_home->iniPath()));
    QCOMPARE(deleteMarks(), 1);
    runtime().stop();
    QVERIFY(QDir().rename(away, root));
    QVERIFY(runtime().start(m_home->iniPath()));
    QCOMPARE(deleteMarks(), 0);
    QVERIFY(!hasFile(Runtime::current()->fileStore(), QStringLiteral("gone.zip")));
}

/// Between the end of a deletion here and the removal, a start elsewhere settled its mark.
void ServiceRuntimeTest::aBodyThatAnotherProgramRemoved()
{
    m_home->initAndStart();
    NoProgress progress;
    StoredFiles &files = *Runtime::current()->records().storedFiles();
    FileStore &store = Runtime::current()->fileStore();
    QVERIFY(store.put(m_home->iniPath(), QStringLiteral("gone.zip"), progress));
    const auto other = FileStore::create(Runtime::current()->configuration().fileStore);
    QVERIFY(other.value->remove(QStringLiteral("gone.zip")));
    QVERIFY(files.removeBody(QStringLiteral("gone.zip")));
#if !defined(Q_OS_WIN) // where a folder in use cannot be taken away
    QVERIFY(QDir(Runtime::current()->configuration().fileStore.root).removeRecursively());
    QVERIFY(!files.removeBody(QStringLiteral("gone.zip")));
#endif
}

void ServiceRuntimeTest::theChangeLogDoesNotGrowForEver()
{
    QVERIFY(m_home->init());
    const auto grow = [this](int entries) {
        runSql(QStringLiteral("INSERT INTO change_log (kind, row_id, op) WITH RECURSIVE n(i) AS "
                              "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                              "SELECT 1, i, 2 FROM n")
                   .arg(entries));
    };
    const auto entriesAfterAStart = [this] {
        if (!runtime().start(m_home->iniPath()))
            return -1;
        SqlQuery query = Runtime::current()->records().database().prepare(
            QStringLiteral("SELECT count(*) AS entries FROM change_log"));
        query.exec().next();
        return query.number("entries");
    };
    grow(150'000);
    const int few = entriesAfterAStart();
    QVERIFY2(few >= 150'000, "a log of that length stays");
    runtime().stop();
    grow(60'000);
    QCOMPARE(entriesAfterAStart(), 100'000);
    runtime().stop();
    QCOMPARE(entriesAfterAStart(), 100'000);
}

/// What was restored from elsewhere names transactions that this server has not seen yet.
void ServiceRuntimeTest::aChangeLogOfAnotherServerIsBegunAnew()
{
    QVERIFY(m_home->init());
    const auto kinds = [this] {
        const auto configuration = Configuration::load(m_home->iniPath());
        return KODMS::Tests::PlainConnection(configuration.value.database)
            .texts(QStringLiteral("SELECT kind FROM change_log ORDER BY seq"));
    };
    runSql(QStringLiteral("DELETE FROM change_log"));
    runSql(QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (1, 1, 2), (2, 1, 2)"));
    const QStringList own{QStringLiteral("1"), QStringLiteral("2")};
    QVERIFY(runtime().start(m_home->iniPath()));
    runtime().stop();
    QCOMPARE(kinds(), own);
    if (!KODMS::Tests::TestDatabase::isServer())
        return; // an embedded log goes with its file, and is at home wherever that is put back
    runSql(QStringLiteral("UPDATE change_log SET xid = '1000000000000' WHERE kind = 2"));
    const QStringList anew{QStringLiteral("0")};
    for (int i = 0; i < 2; ++i) { // once is enough
        QVERIFY(runtime().start(m_home->iniPath()));
        runtime().stop();
        QCOMPARE(kinds(), anew);
    }
}

void ServiceRuntimeTest::aFolderThatCannotBeMadeIsNoticed()
{
    QVERIFY(m_home->init());
    write(m_home->path("blocker"), "");
    m_home->writeIni(
        QStringLiteral("[paths]\ndownload = %1/x/\n").arg(m_home->path("blocker")).toUtf8());
    NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("make folder")));
    QVERIFY(runtime().start(m_home->iniPath()));
    QCOMPARE(log.notices.size(), 1);
}

/// After the last test an installation is left running: it has to close with the
/// application object.
/// With its licence, as some of these ask for.
void ServiceRuntimeTest::namesEveryLibraryBehindIt()
{
    m_home->initAndStart();
    QStringList names;
    const auto all = componentVersions();
    for (const ComponentVersion &one : all) {
        names << one.name;
        QVERIFY2(one.version.contains(QRegularExpression(QStringLiteral("^[0-9]+[.][0-9]"))),
                 qPrintable(one.name + QLatin1Char(' ') + one.version));
        QVERIFY2(!one.licence.isEmpty(), qPrintable(one.name));
    }
    const char *engine = KODMS::Tests::TestDatabase::isServer() ? "PostgreSQL" : "SQLite";
    for (const char *name :
         {"Qt", engine, "libarchive", "ISA-L", "libxlsxwriter", "libmongoc", "libsodium"})
        QVERIFY2(names.contains(QLatin1String(name)), name);
#if defined(Q_OS_WIN) // which computes sums itself
    QVERIFY(!names.contains(QStringLiteral("OpenSSL")));
#else
    QVERIFY(names.contains(QStringLiteral("OpenSSL")));
#endif
}

int main(int argc, char **argv)
{
    KODMS::Tests::prepareEnvironment();
    const Installation last;
    int failed = 0;
    {
        QCoreApplication app(argc, argv);
        ServiceRuntimeTest test;
        failed = KODMS::Tests::runTests(&test, QCoreApplication::arguments());
        last.initAndStart();
    }
    if (ServiceRuntime::instance().isRunning()) {
        qCritical("the services outlived the application");
        ++failed;
    }
    return failed;
}

#include "ServiceRuntimeTest.moc"
