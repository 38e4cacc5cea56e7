// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/DatabaseFile.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/Transaction.h"
#include "tests/records/support/SchemaText.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::schemaOf;
using KODMS::Tests::TempDatabase;
using KODMS::Tests::TestDatabase;

namespace {

/// Folder of the engine in force below the catalogue's root.
QString engineFolder()
{
    return TestDatabase::isServer() ? QStringLiteral("postgres") : QStringLiteral("sqlite");
}

/// The first schema that this engine ever had.
int oldestVersion()
{
    return TestDatabase::isServer() ? 3 : 1;
}

/// An empty place with a connection to it.
class EmptyDatabase {
public:
    Database *operator->() { return &m_database; }

    Database &operator*() { return m_database; }

private:
    TestDatabase m_place;
    Database m_database{m_place.settings(), Database::Open::Create};
};

} // namespace

/// The schema's life: fresh, upgraded, too new, not ours.
class TestSchema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyStatementOfTheCatalogueCanBePrepared();
    void everyStatementThatTheSourcesNameIsInTheCatalogue();
    void aFreshDatabaseHasTheKnownVersion();
    void aSecondInstallationIsRefused();
    void aFreshSchemaEqualsAnUpgradedOne();
    void everyOlderVersionUpgradesToThePresentSchema_data();
    void everyOlderVersionUpgradesToThePresentSchema();
    void aServersFourthVersionThatToldOfEventsUpgradesToo();
    void aDatabaseWithoutPicturesTellsItsFiles();
    void aFailedStepLeavesTheVersionBefore();
    void aNewerDatabaseIsRefused();
    void anEmptyDatabaseIsNotUpgraded();
    void anotherProgramsDatabaseIsRefused();
    void scriptsAreSplitAtEmptyLines();
    void aScriptWithoutAnEndIsRefused();
    void changesOfTheTablesReachTheChangeLog();

private:
    static void writeFile(const QString &path, const char *text);
    /// The schema as that version installed it.
    static void installVersion(Database &database, int version);
};

void TestSchema::installVersion(Database &database, int version)
{
    QFile script(QStringLiteral(KODMS_SOURCE_DIR "/tests/records/data/%1schema-%2.sql")
                     .arg(TestDatabase::isServer() ? QStringLiteral("postgres-") : QString())
                     .arg(version));
    QVERIFY(script.open(QIODevice::ReadOnly));
    const QStringList statements = SqlCatalog::split(QString::fromUtf8(script.readAll()));
    for (const QString &statement : statements)
        database.run(statement);
    database.query("insert_schema_version")
        .bind(":version", version)
        .bind(":applied_time", QStringLiteral("2026-11-21T00:00:00.000Z"))
        .exec();
}

void TestSchema::writeFile(const QString &path, const char *text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

void TestSchema::everyStatementOfTheCatalogueCanBePrepared()
{
    TempDatabase database;
    const QStringList names = database->catalog().names();
    QVERIFY(names.size() > 3);
    QCOMPARE(database->catalog().missingNames(), QStringList());
    for (const QString &name : names) {
        try {
            database->query(name.toLatin1().constData());
        } catch (const SqlError &error) {
            QFAIL(qPrintable(error.logText()));
        }
    }
}

/// query("name") in the sources, and the statements, name each other.
void TestSchema::everyStatementThatTheSourcesNameIsInTheCatalogue()
{
    const SqlCatalog catalog(engineFolder());
    const QString services = QStringLiteral(KODMS_SOURCE_DIR "/services");
    static const QRegularExpression word(QStringLiteral("\"([a-z]+(?:_[a-z]+)+)\""));
    static const QRegularExpression query(QStringLiteral("query\\(\"([a-z_]+)\"\\)"));
    QSet<QString> named;
    QStringList unknown;
    QDirIterator files(services, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto words = word.globalMatch(text); words.hasNext();)
            named << words.next().captured(1);
        for (auto queries = query.globalMatch(text); queries.hasNext();) {
            const QString name = queries.next().captured(1);
            if (!catalog.names().contains(name))
                unknown << file.fileName() + QLatin1Char(' ') + name;
        }
    }
    QCOMPARE(unknown, QStringList());
    QStringList unused;
    for (const QString &name : catalog.names()) {
        if (!named.contains(name))
            unused << name;
    }
    QCOMPARE(unused, QStringList());
}

void TestSchema::aFreshDatabaseHasTheKnownVersion()
{
    TempDatabase database;
    SchemaMigrator migrator(*database);
    QCOMPARE(migrator.installedVersion(), migrator.knownVersion());
    QVERIFY(migrator.upgrade().ok);
}

void TestSchema::aSecondInstallationIsRefused()
{
    TempDatabase database;
    const Outcome outcome = SchemaMigrator(*database).install();
    QVERIFY(!outcome.ok);
    QVERIFY(outcome.text.contains(database->displayText()));
}

void TestSchema::aFreshSchemaEqualsAnUpgradedOne()
{
    const QTemporaryDir dir;
    const QString root = dir.filePath(QStringLiteral("sql"));
    const auto path = [&root](const char *name) -> QString { return root + QLatin1String(name); };
    writeFile(path("/common/schema/10.sql"),
              "CREATE TABLE schema_version (version INTEGER PRIMARY KEY, applied_time TEXT);\n\n"
              "CREATE TABLE job_flows (id @identity@, name TEXT);\n");
    EmptyDatabase old;
    QVERIFY(SchemaMigrator(*old, SqlCatalog(engineFolder(), root)).install().ok);
    old->run(QStringLiteral("INSERT INTO job_flows (name) VALUES ('kept')"));

    writeFile(path("/common/version/2/10.sql"),
              "CREATE TABLE notes (id @identity@, flow_id INTEGER REFERENCES job_flows (id));\n");
    writeFile(root + QLatin1Char('/') + engineFolder() + QStringLiteral("/version/3/10.sql"),
              "CREATE INDEX notes_flow ON notes (flow_id);\n");
    writeFile(path("/another/version/4/10.sql"), "NOTHING THAT THIS ENGINE KNOWS;\n");
    writeFile(path("/common/schema/20.sql"),
              "CREATE TABLE notes (id @identity@, flow_id INTEGER REFERENCES job_flows (id));\n\n"
              "CREATE INDEX notes_flow ON notes (flow_id);\n");
    const SqlCatalog newer(engineFolder(), root);
    QCOMPARE(newer.latestVersion(), 4);
    SchemaMigrator upgrade(*old, newer);
    QVERIFY(upgrade.upgrade().ok);
    QCOMPARE(upgrade.installedVersion(), 4);

    EmptyDatabase fresh;
    QVERIFY(SchemaMigrator(*fresh, newer).install().ok);
    QCOMPARE(schemaOf(*old), schemaOf(*fresh));
    SqlQuery kept = old->prepare(QStringLiteral("SELECT name FROM job_flows"));
    kept.exec();
    QVERIFY(kept.next());
    QCOMPARE(kept.text("name"), QStringLiteral("kept"));
}

void TestSchema::everyOlderVersionUpgradesToThePresentSchema_data()
{
    QTest::addColumn<int>("version");
    const SqlCatalog catalog(engineFolder());
    for (int version = oldestVersion(); version <= catalog.latestVersion(); ++version)
        QTest::newRow(qPrintable(QStringLiteral("version %1").arg(version))) << version;
}

/// The schema of every version was kept as it was installed then. The newest one has to
/// be what a fresh installation makes now: whoever changes the schema adds a version.
void TestSchema::everyOlderVersionUpgradesToThePresentSchema()
{
    QFETCH(int, version);
    EmptyDatabase old;
    installVersion(*old, version);
    const Outcome outcome = SchemaMigrator(*old).upgrade();
    QVERIFY2(outcome.ok, qPrintable(outcome.text));
    TempDatabase fresh;
    QCOMPARE(schemaOf(*old), schemaOf(*fresh));
}

/// For a while version 4 was installed with it.
void TestSchema::aServersFourthVersionThatToldOfEventsUpgradesToo()
{
    if (!TestDatabase::isServer())
        QSKIP("no version of an embedded database had triggers that tell of changes");
    EmptyDatabase old;
    installVersion(*old, 4);
    old->run(QStringLiteral("CREATE TRIGGER events_notify AFTER INSERT ON events "
                            "FOR EACH STATEMENT EXECUTE FUNCTION notify_changes()"));
    const Outcome outcome = SchemaMigrator(*old).upgrade();
    QVERIFY2(outcome.ok, qPrintable(outcome.text));
    TempDatabase fresh;
    QCOMPARE(schemaOf(*old), schemaOf(*fresh));
}

/// As a backup of it is looked at.
void TestSchema::aDatabaseWithoutPicturesTellsItsFiles()
{
    if (TestDatabase::isServer())
        QSKIP("a backup of a server's database is no file of ours to look at");
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("old.db"));
    const DatabaseSettings settings = TempDatabase::settingsFor(path);
    {
        Database old(settings, Database::Open::Create);
        installVersion(old, 1);
        old.run(QStringLiteral("INSERT INTO orig_files (guid, stored_name, create_time) VALUES "
                               "('g', 'a.zip', '2026-11-21T00:00:00.000Z')"));
    }
    const auto contents = inspectDatabaseFile(settings, path);
    QVERIFY2(contents, qPrintable(contents.text()));
    QCOMPARE(contents.value.schemaVersion, 1);
    QCOMPARE(contents.value.storedNames, QStringList(QStringLiteral("a.zip")));
    TempDatabase now;
    const QString at = QStringLiteral("'2026-11-21T00:00:00.000Z'");
    for (const char *row :
         {"customers (code, create_time) VALUES ('A1B', %1)",
          "jobs (name, customer_id, serial_number, create_time) VALUES ('A1B000001', 1, 1, %1)",
          "job_flows (guid, job_name, create_time) VALUES ('g', 'A1B000001', %1)",
          "questions (flow_id, create_time) VALUES (1, %1)",
          "question_pictures (question_id, stored_name, create_time) VALUES (1, 'p.png', %1)"})
        now->run(QString::fromLatin1(row).arg(at).prepend(QStringLiteral("INSERT INTO ")));
    const auto later = inspectDatabaseFile(settings, now->displayText());
    QVERIFY2(later, qPrintable(later.text()));
    QCOMPARE(later.value.storedNames, QStringList(QStringLiteral("p.png")));
}

void TestSchema::aFailedStepLeavesTheVersionBefore()
{
    const QTemporaryDir dir;
    TempDatabase database;
    const int before = SchemaMigrator(*database).installedVersion();
    const QStringList schema = schemaOf(*database);
    const QString step =
        dir.filePath(QStringLiteral("sql/common/version/%1/10.sql").arg(before + 1));
    writeFile(
        step,
        "CREATE TABLE half_done (id @identity@);\n\nCREATE TABLE job_flows (id @identity@);\n");
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("upgrade schema.*job_flows")));
    SchemaMigrator migrator(*database,
                            SqlCatalog(engineFolder(), dir.filePath(QStringLiteral("sql"))));
    QVERIFY(!migrator.upgrade().ok);
    QCOMPARE(migrator.installedVersion(), before);
    QCOMPARE(schemaOf(*database), schema);
}

void TestSchema::aNewerDatabaseIsRefused()
{
    TempDatabase database;
    const int known = SchemaMigrator(*database).knownVersion();
    database->query("insert_schema_version")
        .bind(":version", known + 1)
        .bind(":applied_time", QStringLiteral("2026-11-21T00:00:00.000Z"))
        .exec();
    const Outcome outcome = SchemaMigrator(*database).upgrade();
    QVERIFY(!outcome.ok);
    QVERIFY(outcome.text.contains(QString::number(known + 1)));
    QVERIFY(outcome.text.contains(database->displayText()));
}

void TestSchema::anEmptyDatabaseIsNotUpgraded()
{
    EmptyDatabase database;
    SchemaMigrator migrator(*database);
    QCOMPARE(migrator.installedVersion(), 0);
    QVERIFY(!migrator.upgrade().ok);
}

void TestSchema::anotherProgramsDatabaseIsRefused()
{
    EmptyDatabase database;
    database->run(QStringLiteral("CREATE TABLE schema_version (number TEXT)"));
    SchemaMigrator migrator(*database);
    QVERIFY(!migrator.upgrade().ok);
    QVERIFY(!migrator.install().ok);
}

void TestSchema::scriptsAreSplitAtEmptyLines()
{
    const QStringList statements = SqlCatalog::split(
        QStringLiteral("-- a comment; no statement\nCREATE TABLE a (x);\n\n"
                       "CREATE TRIGGER t AFTER INSERT ON a\nBEGIN\n    DELETE FROM a;\nEND;\n\n"
                       "CREATE FUNCTION f() AS $$\nBEGIN\n    a := 1;\n\n    b := 2;\nEND;\n$$;\n\n"
                       "SELECT 1;\n"));
    QCOMPARE(statements.size(), 4);
    QVERIFY(statements.at(2).endsWith(QStringLiteral("END;\n$$")));
    QCOMPARE(statements.at(0), QStringLiteral("CREATE TABLE a (x)"));
    QVERIFY(statements.at(1).endsWith(QStringLiteral("END")));
    QVERIFY(SqlCatalog::split(QString()).isEmpty());
}

void TestSchema::aScriptWithoutAnEndIsRefused()
{
    QVERIFY_EXCEPTION_THROWN(SqlCatalog::split(QStringLiteral("CREATE TABLE a (x)\n")), SqlError);
}

void TestSchema::changesOfTheTablesReachTheChangeLog()
{
    TempDatabase database;
    const auto lastChange = [&database] {
        SqlQuery query = database->prepare(QStringLiteral(
            "SELECT kind || ' ' || row_id || ' ' || op AS line FROM change_log ORDER BY seq DESC"));
        query.exec();
        return query.next() ? query.text("line") : QString();
    };
    const QString now = QStringLiteral("'2026-11-21T00:00:00.000Z'");
    database->run(QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                 "VALUES ('li', '李', %1)")
                      .arg(now));
    QCOMPARE(lastChange(), QStringLiteral("4 1 1"));
    database->run(
        QStringLiteral("INSERT INTO customers (code, create_time) VALUES ('A1B', %1)").arg(now));
    QCOMPARE(lastChange(), QStringLiteral("3 1 1"));
    database->run(QStringLiteral("INSERT INTO jobs (name, customer_id, serial_number, create_time) "
                                 "VALUES ('A1B000001', 1, 1, %1)")
                      .arg(now));
    database->run(QStringLiteral("INSERT INTO job_flows (guid, job_name, create_time) "
                                 "VALUES ('g', 'A1B000001', %1)")
                      .arg(now));
    QCOMPARE(lastChange(), QStringLiteral("1 1 1"));
    database->run(
        QStringLiteral(
            "INSERT INTO job_compress (flow_id, customer_id, serial_number, flow_create_time, "
            "create_time, update_time) VALUES (1, 1, 1, %1, %1, %1)")
            .arg(now));
    QCOMPARE(lastChange(), QStringLiteral("2 1 1"));
    database->run(QStringLiteral("UPDATE jobs SET layer_count = 4"));
    QCOMPARE(lastChange(), QStringLiteral("1 1 2"));
    database->run(QStringLiteral("INSERT INTO orig_file_assign (flow_id, executor_id, assign_time) "
                                 "VALUES (1, 1, %1)")
                      .arg(now));
    QCOMPARE(lastChange(), QStringLiteral("2 1 2"));
    database->run(QStringLiteral("UPDATE job_flows SET create_time = '2020-01-01T00:00:00.000Z'"));
    SqlQuery copy = database->prepare(QStringLiteral("SELECT flow_create_time FROM job_compress"));
    copy.exec();
    QVERIFY(copy.next());
    QCOMPARE(copy.text("flow_create_time"), QStringLiteral("2020-01-01T00:00:00.000Z"));
}

KODMS_TEST_MAIN(TestSchema, QCoreApplication)
#include "TestSchema.moc"
