// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/PostgresDialect.h"

#include "services/config/Configuration.h"
#include "services/records/LatinFold.h"
#include "services/records/PostgresServer.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

namespace KODMS::Services {

namespace {

/// All writers of this program ask for the same lock; any number does, as long as it stays.
constexpr int writersLock = 20261121;

/// Which history a server writes on; one that has taken another's place begins a new one, in which
/// the numbers of transactions are given out again.
const QString history = QStringLiteral("left(pg_walfile_name(pg_current_wal_lsn()), 8)");
constexpr int historyLength = 8;

/// What the schema's triggers tell.
const QString changesChannel = QStringLiteral("kodms_changes");

struct KnownState {
    const char *code; ///< of an error: all of it, or its class, the first two characters
    SqlError::Kind kind;
};

/// Looked through from the top: single errors before their class.
constexpr KnownState knownStates[] = {
    {"25006", SqlError::Kind::ReadOnly},  // a reading transaction, or a server that only follows
    {"25P03", SqlError::Kind::Lost},      // idle in a transaction for too long
    {"40001", SqlError::Kind::Busy},      // two writers, one row
    {"40P01", SqlError::Kind::Busy},      // deadlock
    {"3D000", SqlError::Kind::Missing},   // no such database
    {"42501", SqlError::Kind::Forbidden}, // no right to
    {"53100", SqlError::Kind::Full},      // disk full
    {"53300", SqlError::Kind::Lost},      // too many connections
    {"55P03", SqlError::Kind::Busy},      // lock time-out
    {"57014", SqlError::Kind::Timeout},   // statement time-out
    {"57P", SqlError::Kind::Lost},        // shut down, crashed, starting up
    {"08", SqlError::Kind::Lost},         // connection
    {"23", SqlError::Kind::Constraint},   // rule of the schema
    {"28", SqlError::Kind::Refused},      // not let in
    {"XX001", SqlError::Kind::Corrupt},   // damaged data
    {"XX002", SqlError::Kind::Corrupt},   // damaged index
};

struct KnownRefusal {
    const char *begin; ///< of what the server or the client says; a name may follow
    const char *end;
    SqlError::Kind kind;
};

/// Of a connection that was not made nothing is known but the text, in the language of the server
/// or of the client's machine. What is not found here may be over soon.
constexpr KnownRefusal knownRefusals[] = {
    {" authentication failed for user", "", SqlError::Kind::Refused},
    {"认证失败", "", SqlError::Kind::Refused},
    {"no password supplied", "", SqlError::Kind::Refused},
    {"pg_hba.conf", "", SqlError::Kind::Refused}, // no entry there, or one that rejects
    {"role \"", "\" is not permitted to log in", SqlError::Kind::Refused},
    {"不允许角色", "进行登录", SqlError::Kind::Refused},
    {"role \"", "\" does not exist", SqlError::Kind::Refused},
    {"角色 \"", "\" 不存在", SqlError::Kind::Refused},
    {"permission denied for database", "", SqlError::Kind::Refused},
    {"对数据库 ", " 权限不够", SqlError::Kind::Refused},
    {"database \"", "\" does not exist", SqlError::Kind::Missing},
    {"数据库 \"", "\" 不存在", SqlError::Kind::Missing},
    {"server does not support SSL", "", SqlError::Kind::Unfit},
    {"服务器不支持 SSL", "", SqlError::Kind::Unfit},
    {"root certificate file", "", SqlError::Kind::Unfit},
    {"certificate verify failed", "", SqlError::Kind::Unfit},
    {"server certificate for", "does not match host name", SqlError::Kind::Unfit},
};

SqlError::Kind kindOfRefusal(const QString &text)
{
    for (const KnownRefusal &known : knownRefusals) {
        const int begin = text.indexOf(QString::fromUtf8(known.begin));
        if (begin >= 0 && text.indexOf(QString::fromUtf8(known.end), begin) >= 0)
            return known.kind;
    }
    return SqlError::Kind::Lost;
}

} // namespace

PostgresDialect::PostgresDialect() : m_connectTimeout(PostgresServer::longestConnecting) {}

QString PostgresDialect::sqlFolder() const
{
    return QStringLiteral("postgres");
}

QString PostgresDialect::qtDriver() const
{
    return QStringLiteral("QPSQL");
}

void PostgresDialect::configure(QSqlDatabase &connection, const DatabaseSettings &settings,
                                bool create) const
{
    PostgresServer server(settings);
    if (create)
        server.makeDatabase();
    server.configure(connection, settings.name, m_connectTimeout);
}

void PostgresDialect::setConnectTimeout(int milliseconds)
{
    constexpr int second = 1000; // ms
    m_connectTimeout = std::clamp(milliseconds / second, 2, PostgresServer::longestConnecting);
}

void PostgresDialect::opened(QSqlDatabase &connection, const DatabaseSettings &settings)
{
    m_connectionName = connection.connectionName();
    m_busyTimeoutMs = settings.busyTimeoutMs;
    m_configuredTimeoutMs = settings.statementTimeoutMs;
    m_silenceTimeoutMs = settings.silenceTimeoutMs;
    const PostgresServer server(settings);
    server.check(connection);
    server.makePatient(connection);
    if (m_timeoutMs)
        setStatementTimeout(*m_timeoutMs);
    if (m_wake) {
        subscribe();
        m_wake(); // what was told while nobody listened
    }
}

bool PostgresDialect::listen(const std::function<void()> &wake)
{
    const bool hasListened = static_cast<bool>(m_wake);
    m_wake = wake;
    if (m_wake && !hasListened)
        subscribe();
    return static_cast<bool>(m_wake);
}

/// What this connection itself has told of is no news.
void PostgresDialect::subscribe()
{
    const QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
    QSqlDriver *driver = connection.driver();
    if (driver->subscribedToNotifications().contains(changesChannel))
        return;
    if (!driver->subscribeToNotification(changesChannel))
        throw SqlError(kindOf(driver->lastError()), QStringLiteral("LISTEN"),
                       driver->lastError().databaseText());
    const auto told = qOverload<const QString &, QSqlDriver::NotificationSource, const QVariant &>(
        &QSqlDriver::notification);
    QObject::connect(
        driver, told, driver,
        [this](const QString &, QSqlDriver::NotificationSource source, const QVariant &) {
            if (source != QSqlDriver::SelfSource && m_wake)
                m_wake();
        });
}

SqlError::Kind PostgresDialect::kindOf(const QSqlError &error) const
{
    // What the client itself reports, without the server, is always about the connection.
    const QByteArray code = error.nativeErrorCode().toLatin1();
    if (error.type() == QSqlError::ConnectionError)
        return kindOfRefusal(error.databaseText());
    if (code.isEmpty())
        return SqlError::Kind::Lost;
    for (const KnownState &known : knownStates) {
        if (code.startsWith(known.code))
            return known.kind;
    }
    return SqlError::Kind::Other;
}

bool PostgresDialect::hasForgottenStatement(const QSqlError &error) const
{
    // Unknown, as behind what shares connections; or its table has got other columns.
    const QString code = error.nativeErrorCode();
    return code == QLatin1String("26000") || code == QLatin1String("0A000");
}

QStringList PostgresDialect::beginWrite() const
{
    // A statement sees what was there when it began: after the wait, what other writers left.
    const QString begin = QStringLiteral("BEGIN ISOLATION LEVEL READ COMMITTED");
    // Whoever has the lock and is heard of no more lets go of it. A server that only follows
    // another one numbers nothing, and refuses the first change.
    const QString lock =
        QStringLiteral("SELECT pg_advisory_xact_lock(%1), "
                       "set_config('idle_in_transaction_session_timeout', '%2', true), "
                       "CASE WHEN NOT pg_is_in_recovery() THEN %3 || "
                       "CAST(pg_current_xact_id() AS TEXT) END AS transaction_id")
            .arg(writersLock)
            .arg(m_silenceTimeoutMs)
            .arg(history);
    const QString limit = QStringLiteral("SET LOCAL statement_timeout = %1");
    const int timeout = m_timeoutMs.value_or(m_configuredTimeoutMs);
    if (timeout == 0 || timeout > m_busyTimeoutMs)
        return {begin, lock};
    return {begin, limit.arg(0), lock, limit.arg(timeout)};
}

QString PostgresDialect::fateOf(const QString &transactionId) const
{
    return QStringLiteral("SELECT CASE %1 WHEN '%2' THEN pg_xact_status(CAST('%3' AS xid8)) "
                          "ELSE 'the server goes on from elsewhere' END AS fate")
        .arg(history, transactionId.left(historyLength), transactionId.mid(historyLength));
}

QString PostgresDialect::beginRead() const
{
    return QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

QString PostgresDialect::placeText(const DatabaseSettings &settings) const
{
    return QStringLiteral("%1:%2/%3").arg(settings.host).arg(settings.port).arg(settings.name);
}

QString PostgresDialect::snapshotInto(const QString & /*path*/) const
{
    return {};
}

QString PostgresDialect::identityColumn() const
{
    return QStringLiteral("INTEGER GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY");
}

QString PostgresDialect::dropOf(const QString &createStatement) const
{
    const QString words = createStatement.simplified();
    const QString drop = QStringLiteral("DROP ") + words.section(QLatin1Char(' '), 1, 2);
    if (!words.startsWith(QLatin1String("CREATE TRIGGER ")))
        return drop;
    const QString table = words.section(QStringLiteral(" ON "), 1).section(QLatin1Char(' '), 0, 0);
    return drop + QStringLiteral(" ON ") + table;
}

QString PostgresDialect::containsText(const QString &column, const QString &text,
                                      QString *bound) const
{
    // Of the collation "C", lower() changes the letters A to Z and nothing else, whatever
    // the database's own; no text means anything but itself, however long it is.
    *bound = foldedLatin(text);
    if (!hasLatinLetter(text))
        return QStringLiteral("strpos(%1, ?) > 0").arg(column);
    return QStringLiteral("strpos(lower(%1 COLLATE \"C\"), ?) > 0").arg(column);
}

QString PostgresDialect::numberInText(const QString &column) const
{
    return QStringLiteral("CASE WHEN %1 ~ '^[0-9]{1,18}$' THEN CAST(%1 AS BIGINT) END").arg(column);
}

QString PostgresDialect::boundNumber() const
{
    return QStringLiteral("CAST(? AS BIGINT)");
}

QString PostgresDialect::nullsOrder(bool isDescending) const
{
    return isDescending ? QStringLiteral(" NULLS LAST") : QStringLiteral(" NULLS FIRST");
}

void PostgresDialect::setStatementTimeout(int milliseconds)
{
    const QString statement = QStringLiteral("SET statement_timeout = %1").arg(milliseconds);
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    if (!query.exec(statement))
        throw SqlError(kindOf(query.lastError()), statement, query.lastError().databaseText());
    m_timeoutMs = milliseconds;
}

} // namespace KODMS::Services
