// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/PostgresServer.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Guid.h"
#include "services/records/PostgresDialect.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr int oldestVersion = 130000;    // the first whose transaction numbers never wrap
constexpr int firstOfProviders = 150000; // from here on, a database says whose locales it uses

QString tr(const char *text)
{
    return QCoreApplication::translate("PostgresServer", text);
}

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

/// The catalogue's letter by the name that one types.
QString providerOf(const QString &letter)
{
    if (letter == QLatin1String("c"))
        return QStringLiteral("libc");
    if (letter == QLatin1String("i"))
        return QStringLiteral("icu");
    return letter == QLatin1String("b") ? QStringLiteral("builtin") : letter;
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
    const QString path = m_settings.passwordFile;
    if (!QFileInfo::exists(path))
        throw SqlError(SqlError::Kind::Unfit, {},
                       QStringLiteral("the password file %1 is not there").arg(path),
                       tr("密码文件 %1 不存在").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SqlError(
            SqlError::Kind::Unfit, {},
            QStringLiteral("the password file %1 cannot be read: %2").arg(path, file.errorString()),
            tr("密码文件 %1 不能读取：%2").arg(path, file.errorString()));
    QString line = QString::fromUtf8(file.readLine());
    for (const char end : {'\n', '\r'}) {
        if (line.endsWith(QLatin1Char(end)))
            line.chop(1);
    }
    if (line.isEmpty())
        throw SqlError(SqlError::Kind::Unfit, {},
                       QStringLiteral("the password file %1 is empty").arg(path),
                       tr("密码文件 %1 的第一行是空的，应为密码").arg(path));
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
        throw SqlError(SqlError::Kind::Unfit, {},
                       QStringLiteral("the root certificate %1 cannot be read").arg(path),
                       tr("根证书 %1 不能读取（路径中不能有分号）").arg(path));
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
    run(query, QStringLiteral("SELECT CAST(current_setting('server_version_num') AS INTEGER)"));
    query.next();
    try {
        run(query, creation(m_settings.name, query.value(0).toInt()));
    } catch (const SqlError &error) {
        run(query, look); // somebody else has made it meanwhile, or it cannot be made
        if (query.next())
            return;
        if (error.kind() != SqlError::Kind::Forbidden)
            throw;
        throw SqlError(error.kind(), error.statement(), error.driverText(),
                       tr("账户 %1 无权在服务器上新建数据库 %2：请先由服务器的管理员新建")
                           .arg(m_settings.user, PostgresDialect().placeText(m_settings)));
    }
}

/// What is not said comes from the server's own beginnings, whose order may be a language's.
QString PostgresServer::creation(const QString &name, int version)
{
    QString statement = QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' "
                                       "LC_COLLATE 'C.UTF-8' LC_CTYPE 'C.UTF-8'")
                            .arg(quoted(name, QLatin1Char('"')));
    if (version >= firstOfProviders)
        statement += QStringLiteral(" LOCALE_PROVIDER libc");
    return statement;
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
        throw SqlError(SqlError::Kind::Unfit, {},
                       place + QStringLiteral(": PostgreSQL 13 or newer is needed"),
                       tr("%1 的版本太旧：需要 PostgreSQL 13 或更新的版本").arg(place));
    const QString encoding = query.value(1).toString();
    const QString collation = query.value(2).toString();
    const QString characterType = query.value(3).toString();
    const QString provider = providerOf(query.value(4).toString());
    if (encoding == QLatin1String("UTF8") && provider == QLatin1String("libc") &&
        isByteOrder(collation) && knowsAllLetters(characterType))
        return;
    throw notFit(encoding, collation, characterType, provider);
}

SqlError PostgresServer::notFit(const QString &encoding, const QString &collation,
                                const QString &characterType, const QString &provider) const
{
    const QString place = PostgresDialect().placeText(m_settings);
    return {SqlError::Kind::Unfit,
            {},
            QStringLiteral("%1: a database of encoding %2, collation %3, character type %4 and "
                           "locale provider %5 cannot hold the records; encoding UTF8, collation "
                           "C.UTF-8 (or C), character type C.UTF-8 and locale provider libc are "
                           "needed")
                .arg(place, encoding, collation, characterType, provider),
            tr("数据库 %1 不能存放记录：它的编码是 %2，排序规则是 %3，字符类型是 %4，区域提供者是 "
               "%5；需要编码 UTF8，排序规则 C.UTF-8（或 C），字符类型 C.UTF-8，区域提供者 libc")
                .arg(place, encoding, collation, characterType, provider)};
}

} // namespace KODMS::Services
