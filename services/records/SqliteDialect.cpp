// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqliteDialect.h"

#include "services/config/Configuration.h"
#include "services/records/LatinFold.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QStorageInfo>
#include <QTemporaryFile>
#include <QVariant>

#include <sqlite3.h>

namespace KODMS::Services {

namespace {

[[noreturn]] void refusePlace(SqlError::Kind kind, const QString &path, const char *why)
{
    throw SqlError(kind, {}, QDir::toNativeSeparators(path) + QLatin1String(why));
}

/// Opening makes the write-ahead log and its index; the engine has several names for a disk
/// that has no room for them.
bool hasRoom(const QString &databasePath)
{
    constexpr int needed = 64 * 1024;
    QTemporaryFile probe(QFileInfo(databasePath).absolutePath() +
                         QStringLiteral("/.kodms-room-XXXXXX"));
    return probe.open() && probe.write(QByteArray(needed, 'x')) == needed && probe.flush();
}

QString escapedPattern(const QString &text)
{
    QString pattern;
    pattern.reserve(text.size() + 2);
    for (const QChar c : text) {
        if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            pattern += QLatin1Char('\\');
        pattern += c;
    }
    return pattern;
}

} // namespace

QString SqliteDialect::sqlFolder() const
{
    return QStringLiteral("sqlite");
}

QString SqliteDialect::qtDriver() const
{
    return QStringLiteral("QSQLITE");
}

bool SqliteDialect::isNetworkFileSystem(const QByteArray &type)
{
    const QByteArray name = type.toLower();
    for (const char *known :
         {"nfs", "cifs", "smb", "fuse.sshfs", "fuse.smb", "9p", "afs", "ceph", "glusterfs"}) {
        if (name.startsWith(known))
            return true;
    }
    return false;
}

void SqliteDialect::checkPlace(const DatabaseSettings &settings, bool create) const
{
    const QFileInfo file(settings.path);
    const QFileInfo folder(file.absolutePath());
    if (!file.exists() && !create)
        refusePlace(SqlError::Kind::Lost, settings.path, ": no such database");
    if (file.isDir())
        refusePlace(SqlError::Kind::Lost, settings.path, ": is a folder");
    if (!folder.isDir())
        refusePlace(SqlError::Kind::Lost, folder.filePath(), ": no such folder");
    if (!folder.isWritable() || (file.exists() && !file.isWritable()))
        refusePlace(SqlError::Kind::ReadOnly, settings.path, ": may not be written");
    const QByteArray type = QStorageInfo(folder.filePath()).fileSystemType();
    if (isNetworkFileSystem(type))
        refusePlace(SqlError::Kind::Lost, settings.path,
                    ": the embedded database cannot work on a network folder; use the "
                    "database server instead");
}

void SqliteDialect::configure(QSqlDatabase &connection, const DatabaseSettings &settings,
                              bool create) const
{
    checkPlace(settings, create);
    connection.setDatabaseName(settings.path);
    connection.setConnectOptions(
        QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(settings.busyTimeoutMs));
}

void SqliteDialect::runPragma(QSqlDatabase &connection, const QString &pragma) const
{
    QSqlQuery query(connection);
    if (!query.exec(pragma))
        throw SqlError(kindOf(query.lastError()), pragma, query.lastError().databaseText());
}

void SqliteDialect::opened(QSqlDatabase &connection, const DatabaseSettings &settings)
{
    try {
        prepare(connection, settings);
    } catch (const SqlError &error) {
        const bool isUnclear =
            error.kind() == SqlError::Kind::Lost || error.kind() == SqlError::Kind::Other;
        if (isUnclear && !hasRoom(settings.path))
            throw SqlError(SqlError::Kind::Full, error.statement(), error.driverText());
        throw;
    }
}

void SqliteDialect::prepare(QSqlDatabase &connection, const DatabaseSettings &settings)
{
    runPragma(connection, QStringLiteral("PRAGMA foreign_keys = ON"));
    runPragma(connection, QStringLiteral("SELECT count(*) FROM sqlite_master"));
    runPragma(connection, QStringLiteral("PRAGMA journal_mode = WAL"));
    runPragma(connection, QStringLiteral("PRAGMA synchronous = FULL"));
    runPragma(connection, QStringLiteral("PRAGMA cache_size = -32768"));
    runPragma(connection, QStringLiteral("PRAGMA temp_store = MEMORY"));
    const QVariant handle = connection.driver()->handle();
    m_limit.attach(*static_cast<sqlite3 *const *>(handle.constData()));
    m_limit.setTimeout(settings.statementTimeoutMs);
}

SqlError::Kind SqliteDialect::kindOf(const QSqlError &error) const
{
    constexpr int primaryCode = 0xff;
    const int code = error.nativeErrorCode().toInt();
    // Opening needs room for the index of the write-ahead log, and calls a full disk its own name.
    if (code == SQLITE_IOERR_SHMSIZE)
        return SqlError::Kind::Full;
    switch (code & primaryCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return SqlError::Kind::Busy;
    case SQLITE_CONSTRAINT:
        return SqlError::Kind::Constraint;
    case SQLITE_FULL:
        return SqlError::Kind::Full;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return SqlError::Kind::ReadOnly;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return SqlError::Kind::Corrupt;
    case SQLITE_CANTOPEN:
        return SqlError::Kind::Lost;
    case SQLITE_INTERRUPT:
        return SqlError::Kind::Timeout;
    default:
        return SqlError::Kind::Other;
    }
}

QStringList SqliteDialect::beginWrite() const
{
    return {QStringLiteral("BEGIN IMMEDIATE")}; // a deferred one fails at once instead of waiting
}

QString SqliteDialect::beginRead() const
{
    return QStringLiteral("BEGIN");
}

QString SqliteDialect::placeText(const DatabaseSettings &settings) const
{
    return QDir::toNativeSeparators(settings.path);
}

QString SqliteDialect::snapshotInto(const QString &path) const
{
    QString quoted = path;
    return QStringLiteral("VACUUM INTO '%1'")
        .arg(quoted.replace(QLatin1Char('\''), QStringLiteral("''")));
}

QString SqliteDialect::identityColumn() const
{
    return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
}

QString SqliteDialect::dropOf(const QString &createStatement) const
{
    return QStringLiteral("DROP ") + createStatement.section(QLatin1Char(' '), 1, 2);
}

QString SqliteDialect::containsText(const QString &column, const QString &text,
                                    QString *bound) const
{
    // A pattern may have 50,000 bytes, so longer texts take the slower way, which has no limit.
    constexpr int longestPattern = 10000;
    if (!hasLatinLetter(text)) {
        *bound = text;
        return QStringLiteral("instr(%1, ?) > 0").arg(column);
    }
    if (text.size() <= longestPattern) {
        *bound = QLatin1Char('%') + escapedPattern(text) + QLatin1Char('%');
        return column + QStringLiteral(" LIKE ? ESCAPE '\\'");
    }
    *bound = foldedLatin(text);
    return QStringLiteral("instr(lower(%1), ?) > 0").arg(column);
}

QString SqliteDialect::numberInText(const QString &column) const
{
    return QStringLiteral("CASE WHEN %1 <> '' AND length(%1) <= 18 AND %1 NOT GLOB '*[^0-9]*' "
                          "THEN CAST(%1 AS INTEGER) END")
        .arg(column);
}

QString SqliteDialect::boundNumber() const
{
    return QStringLiteral("?");
}

QString SqliteDialect::nullsOrder(bool /*isDescending*/) const
{
    return {}; // as this engine orders of itself
}

void SqliteDialect::setStatementTimeout(int milliseconds)
{
    m_limit.setTimeout(milliseconds);
}

void SqliteDialect::statementStarts()
{
    m_limit.start();
}

} // namespace KODMS::Services
