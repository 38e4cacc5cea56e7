// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Database.h"
#include "services/records/SqliteDialect.h"
#include "services/records/Transaction.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QTest>

#include <sqlite3.h>

using namespace KODMS::Services;
using KODMS::Tests::failureOf;
using KODMS::Tests::TempDatabase;
using KODMS::Tests::WithoutPrivilege;

namespace {

int eventsIn(Database &database)
{
    SqlQuery query = database.prepare(QStringLiteral("SELECT count(*) AS n FROM events"));
    query.exec().next();
    return query.number("n");
}

void addEvent(Database &database, const QString &action)
{
    SqlQuery query = database.prepare(
        QStringLiteral("INSERT INTO events (create_time, action) VALUES ('t', :action)"));
    query.bind(":action", action).exec();
}

} // namespace

/// The embedded database's file, and every way in which it can be unusable.
class TestDatabasePlaces : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anUnusablePlaceIsRefused_data();
    void anUnusablePlaceIsRefused();
    void aDamagedFileIsRefused();
    void aTruncatedFileIsRefused();
    void aDamagedPageIsReportedWhenItIsRead();
    void noRoomForTheLogIsAFullDisk();
    void aReadOnlyFolderIsRefused();
    void theConnectionIsSetForDurableWork();
    void aFullDiskLeavesTheOldState();
    void anUnknownDriverIsRefused();
    void networkFileSystemsAreKnown();
};

void TestDatabasePlaces::anUnusablePlaceIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no file") << QStringLiteral("missing.db");
    QTest::newRow("no folder") << QStringLiteral("no/folder/records.db");
    QTest::newRow("a folder") << QStringLiteral(".");
}

void TestDatabasePlaces::anUnusablePlaceIsRefused()
{
    QFETCH(QString, path);
    const QTemporaryDir dir;
    const auto settings = TempDatabase::settingsFor(dir.filePath(path));
    QCOMPARE(failureOf([&] { Database database(settings); }), SqlError::Kind::Lost);
    QVERIFY(!QFileInfo(settings.path).isFile());
}

void TestDatabasePlaces::aDamagedFileIsRefused()
{
    const QTemporaryDir dir;
    const auto settings = TempDatabase::settingsFor(dir.filePath(QStringLiteral("records.db")));
    QFile file(settings.path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    QCOMPARE(failureOf([&] { Database database(settings); }), SqlError::Kind::Corrupt);
}

void TestDatabasePlaces::aTruncatedFileIsRefused()
{
    TempDatabase database;
    const QString copy = QFileInfo(database.settings().path).path() + QStringLiteral("/cut.db");
    database->run(QStringLiteral("VACUUM INTO '%1'").arg(copy));
    QVERIFY(QFile::resize(copy, QFileInfo(copy).size() / 3));
    QCOMPARE(failureOf([&] { Database cut(TempDatabase::settingsFor(copy)); }),
             SqlError::Kind::Corrupt);
}

void TestDatabasePlaces::aDamagedPageIsReportedWhenItIsRead()
{
    TempDatabase database;
    for (int i = 0; i < 200; ++i)
        database->run(QStringLiteral("INSERT INTO events (create_time, action) VALUES ('t', '%1')")
                          .arg(QString(500, QLatin1Char('e'))));
    const QString copy = QFileInfo(database.settings().path).path() + QStringLiteral("/damaged.db");
    database->run(QStringLiteral("VACUUM INTO '%1'").arg(copy));
    QFile file(copy);
    QVERIFY(file.open(QIODevice::ReadWrite));
    for (qint64 page = 4096; page < file.size(); page += 4096) {
        file.seek(page);
        file.write(QByteArray(64, '\xff'));
    }
    file.close();
    QCOMPARE(failureOf([&] {
                 Database damaged(TempDatabase::settingsFor(copy));
                 SqlQuery query = damaged.prepare(QStringLiteral("SELECT action FROM events"));
                 query.exec();
                 while (query.next()) {
                 }
             }),
             SqlError::Kind::Corrupt);
}

void TestDatabasePlaces::noRoomForTheLogIsAFullDisk()
{
    const auto kindOf = [](int code) {
        const QSqlError error({}, {}, QSqlError::StatementError, QString::number(code));
        return SqliteDialect().kindOf(error);
    };
    QCOMPARE(kindOf(SQLITE_IOERR_SHMSIZE), SqlError::Kind::Full);
    QCOMPARE(kindOf(SQLITE_IOERR_READ), SqlError::Kind::Other);
}

void TestDatabasePlaces::aReadOnlyFolderIsRefused()
{
    const QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("locked"));
    QVERIFY(QDir().mkpath(folder));
    const auto settings = TempDatabase::settingsFor(folder + QStringLiteral("/records.db"));
    const auto readable = QFile::ReadOwner | QFile::ExeOwner;
    QVERIFY(QFile::setPermissions(folder, readable));
    const WithoutPrivilege ordinary;
    if (!ordinary.isBound())
        QSKIP("this account keeps the power to write everywhere");
    const auto kind = failureOf([&] { Database database(settings, Database::Open::Create); });
    QVERIFY(QFile::setPermissions(folder, readable | QFile::WriteOwner));
    QCOMPARE(kind, SqlError::Kind::ReadOnly);
}

void TestDatabasePlaces::theConnectionIsSetForDurableWork()
{
    TempDatabase database;
    const auto pragma = [&database](const char *name) -> QString {
        SqlQuery query = database->prepare(QStringLiteral("PRAGMA ") + QLatin1String(name));
        query.exec().next();
        return query.text(name);
    };
    QCOMPARE(pragma("journal_mode"), QStringLiteral("wal"));
    QCOMPARE(pragma("synchronous"), QStringLiteral("2"));
    QCOMPARE(pragma("foreign_keys"), QStringLiteral("1"));
}

void TestDatabasePlaces::aFullDiskLeavesTheOldState()
{
    TempDatabase database;
    addEvent(*database, QStringLiteral("before"));
    SqlQuery pages = database->prepare(QStringLiteral("PRAGMA page_count"));
    pages.exec().next();
    const int limit = pages.number("page_count") + 4;
    database->prepare(QStringLiteral("PRAGMA max_page_count = %1").arg(limit)).exec().next();
    QCOMPARE(failureOf([&] {
                 Transaction transaction(*database);
                 for (int i = 0; i < 1000; ++i)
                     addEvent(*database, QString(1000, QLatin1Char('f')));
                 transaction.commit();
             }),
             SqlError::Kind::Full);
    QCOMPARE(eventsIn(*database), 1);
    addEvent(*database, QStringLiteral("after"));
    QCOMPARE(eventsIn(*database), 2);
}

void TestDatabasePlaces::anUnknownDriverIsRefused()
{
    auto settings = TempDatabase::settingsFor(QStringLiteral("x.db"));
    settings.driver = QStringLiteral("paper");
    QCOMPARE(failureOf([&] { Database database(settings); }), SqlError::Kind::Lost);
}

void TestDatabasePlaces::networkFileSystemsAreKnown()
{
    for (const char *type : {"nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs", "9p"})
        QVERIFY2(SqliteDialect::isNetworkFileSystem(type), type);
    for (const char *type : {"ext4", "btrfs", "xfs", "tmpfs", "overlay", "NTFS", "fuseblk", ""})
        QVERIFY2(!SqliteDialect::isNetworkFileSystem(type), type);
}

KODMS_TEST_MAIN(TestDatabasePlaces, QCoreApplication)
#include "TestDatabasePlaces.moc"
