// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/PostgresServer.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Guid.h"
#include "services/records/PostgresDialect.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr int oldestVersion = 130000; // the first whose transaction numbers never wrap

/// Of these, byte order is character order, as in the embedded database.
bool isByteOrder(const QString &collation)
{
    const QString name = collation.toLower();
    return name == QLatin1String("c") || name == QLatin1String("posix") ||
           name == QLatin1String("c.utf-8") || name == QLatin1String("c.utf8");
}

/// The plain locale C takes every character but the Latin ones for nothing at all.
bool knowsAllLetters(const QString &characterType)
{
    const QString name = characterType.toLower();
    return name.endsWith(QLatin1String(".utf-8")) || name.endsWith(QLatin1String(".utf8"));
}

void run(QSqlQuery &query, const QString &statement)
{
    if (!query.exec(statement))
        throw SqlError(PostgresDialect().kindOf(query.lastError()), statement,
                       query.lastError().databaseText());
}

/// As a text or a name within a statement.
QString quoted(QString text, QLatin1Char mark)
{
    return mark + text.replace(mark, QString(2, mark)) + mark;
}

/// A connection that is gone with the object.
class PassingConnection {
public:
    PassingConnection() : m_name(QStringLiteral("kodms-") + newGuid()) {}

    ~PassingConnection() { QSqlDatabase::removeDatabase(m_name); }

    PassingConnection(const PassingConnection &) = delete;
    PassingConnection &operator=(const PassingConnection &) = delete;

    QSqlDatabase add() const { return QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_name); }

private:
    QString m_name;
};

} // namespace

QString PostgresServer::password() const
{
    if (m_settings.passwordFile.isEmpty())
        return {};
    QFile file(m_settings.passwordFile);
    if (!file.open(QIODevice::ReadOnly))
        throw SqlError(SqlError::Kind::Lost, {},
                       QStringLiteral("the password file %1 cannot be read: %2")
                           .arg(m_settings.passwordFile, file.errorString()));
    QString line = QString::fromUtf8(file.readLine());
    for (const char end : {'\n', '\r'}) {
        if (line.endsWith(QLatin1Char(end)))
            line.chop(1);
    }
    return line;
}

/// How the connection is kept from being overheard, and how the server proves who it is.
QString PostgresServer::sslOptions() const
{
    QString options;
    if (!m_settings.sslMode.isEmpty())
        options += QStringLiteral(";sslmode=") + m_settings.sslMode;
    QString path = m_settings.sslRootCertificate;
    if (path.isEmpty())
        return options;
    // The driver makes a blank of a semicolon, wherever it stands.
    if (path.contains(QLatin1Char(';')) || !QFile(path).open(QIODevice::ReadOnly))
        throw SqlError(SqlError::Kind::Lost, {},
                       QStringLiteral("the root certificate %1 cannot be read").arg(path));
    path.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    path.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return options + QStringLiteral(";sslrootcert='%1'").arg(path);
}

/// Settings that every statement of the connection finds from its first moment on.
QString PostgresServer::options() const
{
    const int lockTimeout = std::max(m_settings.busyTimeoutMs, 1); // 0 would mean: for ever
    const QStringList all{
        QStringLiteral("statement_timeout=%1").arg(m_settings.statementTimeoutMs),
        QStringLiteral("lock_timeout=%1").arg(lockTimeout),
        // A reader may be silent as long as it likes: it keeps nobody waiting.
        QStringLiteral("idle_in_transaction_session_timeout=0"),
        QStringLiteral("tcp_keepalives_idle=30"), QStringLiteral("tcp_keepalives_interval=10"),
        QStringLiteral("tcp_keepalives_count=3"), QStringLiteral("client_min_messages=error"),
        // The first runs of a statement are planned for their values, the later ones, of the
        // catalogue's, once for all. Always planning costs the page's rows four times as much;
        // never planning for the values leads long searches astray.
        QStringLiteral("plan_cache_mode=auto"),
        QStringLiteral("jit=off"), // takes longer than the statements that it is for
    };
    return QStringLiteral("-c ") + all.join(QStringLiteral(" -c "));
}

void PostgresServer::configure(QSqlDatabase &connection, const QString &name,
                               int connectTimeout) const
{
    connection.setHostName(m_settings.host);
    connection.setPort(m_settings.port);
    connection.setDatabaseName(name);
    connection.setUserName(m_settings.user);
    connection.setPassword(password());
    connection.setConnectOptions(
        QStringLiteral("connect_timeout=%1;application_name=kodms;client_encoding=UTF8;"
                       "keepalives=1;keepalives_idle=15;keepalives_interval=5;"
                       "keepalives_count=3;tcp_user_timeout=20000;options='%2'")
            .arg(connectTimeout)
            .arg(options()) +
        sslOptions());
}

void PostgresServer::makeDatabase() const
{
    const PassingConnection passing;
    QSqlDatabase maintenance = passing.add();
    configure(maintenance, QStringLiteral("postgres"));
    if (!maintenance.open()) {
        // Some servers let nobody in there; the database may have been made for us.
        qCDebug(lcRecords).noquote() << "make database" << maintenance.lastError().databaseText();
        return;
    }
    makeDatabaseOn(maintenance);
}

void PostgresServer::makeDatabaseOn(QSqlDatabase &connection) const
{
    QSqlQuery query(connection);
    const QString look = QStringLiteral("SELECT 1 FROM pg_database WHERE datname = ") +
                         quoted(m_settings.name, QLatin1Char('\''));
    run(query, look);
    if (query.next())
        return;
    run(query, QStringLiteral("SET statement_timeout = 0"));
    try {
        run(query, QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' "
                                  "LC_COLLATE 'C.UTF-8' LC_CTYPE 'C.UTF-8'")
                       .arg(quoted(m_settings.name, QLatin1Char('"'))));
    } catch (const SqlError &) {
        run(query, look); // somebody else has made it meanwhile, or it cannot be made
        if (!query.next())
            throw;
    }
}

/// Not every version knows these, and none lets a connection begin with what it does not know.
void PostgresServer::makePatient(QSqlDatabase &connection) const
{
    if (m_settings.silenceTimeoutMs > 0)
        return;
    QSqlQuery query(connection);
    run(query, QStringLiteral("SELECT set_config(name, '0', false) FROM pg_settings "
                              "WHERE name IN ('idle_session_timeout', 'transaction_timeout')"));
}

void PostgresServer::check(QSqlDatabase &connection) const
{
    QSqlQuery query(connection);
    // What is acknowledged has to be on the disk, also where a server's default says otherwise.
    run(query, QStringLiteral("SELECT CAST(current_setting('server_version_num') AS INTEGER), "
                              "pg_encoding_to_char(d.encoding), d.datcollate, d.datctype, "
                              "coalesce(to_jsonb(d) ->> 'datlocprovider', 'c'), "
                              "set_config('synchronous_commit', "
                              "CASE current_setting('synchronous_commit') WHEN 'off' THEN 'on' "
                              "ELSE current_setting('synchronous_commit') END, false) "
                              "FROM pg_database d WHERE d.datname = current_database()"));
    query.next();
    const QString place = PostgresDialect().placeText(m_settings);
    if (query.value(0).toInt() < oldestVersion)
        throw SqlError(SqlError::Kind::Lost, {},
                       place + QStringLiteral(": PostgreSQL 13 or newer is needed"));
    const QString encoding = query.value(1).toString();
    const QString collation = query.value(2).toString();
    const QString characterType = query.value(3).toString();
    const bool isPlain = query.value(4).toString() == QLatin1String("c");
    if (encoding == QLatin1String("UTF8") && isPlain && isByteOrder(collation) &&
        knowsAllLetters(characterType))
        return;
    throw SqlError(SqlError::Kind::Lost, {},
                   QStringLiteral("%1: a database of encoding %2, collation %3 and character type "
                                  "%4 cannot hold the records; encoding UTF8, collation C.UTF-8 "
                                  "(or C) and character type C.UTF-8 are needed")
                       .arg(place, encoding, collation, characterType));
}

} // namespace KODMS::Services
