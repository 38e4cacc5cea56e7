// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Database.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Dialect.h"
#include "services/records/Guid.h"
#include "services/records/Transaction.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>
#include <chrono>
#include <thread>

namespace KODMS::Services {

namespace {

/// So long a server may take to come up again; then the action fails.
constexpr int longestReopening = 5000; // ms
/// The last attempt begins when this is left: a client waits for no less.
constexpr int shortestAttempt = 2000; // ms
/// After each attempt twice as long: whoever comes up is not kept from it by many who ask.
constexpr int firstPause = 100;
constexpr int longestPause = 800;

constexpr int mostDiscarded = 20; // statements

} // namespace

Database::Database(const DatabaseSettings &settings, Open mode)
    : m_settings(settings), m_dialect(Dialect::create(settings)), m_catalog(m_dialect->sqlFolder()),
      m_connectionName(QStringLiteral("kodms-") + newGuid())
{
    const QStringList missing = m_catalog.missingNames();
    if (!missing.isEmpty())
        throw SqlError(SqlError::Kind::Other, missing.join(QLatin1Char(' ')),
                       QStringLiteral("statements are missing for this database driver"));
    try {
        open(mode);
    } catch (...) {
        close();
        throw;
    }
}

Database::~Database()
{
    close();
}

void Database::open(Open mode)
{
    QSqlDatabase connection = QSqlDatabase::addDatabase(m_dialect->qtDriver(), m_connectionName);
    if (!connection.isValid())
        throw SqlError(SqlError::Kind::Lost, {},
                       QStringLiteral("the database driver is not installed: ") +
                           m_dialect->qtDriver());
    m_dialect->configure(connection, m_settings, mode == Open::Create);
    if (!connection.open())
        throw SqlError(m_dialect->kindOf(connection.lastError()), displayText(),
                       connection.lastError().databaseText());
    m_dialect->opened(connection, m_settings);
}

/// Statements of the embedded engine go before their connection; those of a server would
/// each say good-bye to it, and find nobody when it is gone.
void Database::close()
{
    if (!m_dialect->isServer())
        m_idle.clear();
    {
        QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
        if (!m_dialect->isServer())
            connection.close();
    }
    QSqlDatabase::removeDatabase(m_connectionName);
    m_idle.clear();
    m_discarded.clear();
}

void Database::abandon()
{
    if (!m_dialect->isServer())
        return;
    ++m_generation;
    m_isBroken = m_transactionDepth > 0;
    close();
}

/// Who has waited in vain is not kept waiting by each of the next actions again.
int Database::longestWait() const
{
    const bool isWaitOver = m_sinceFailure.isValid() && m_sinceFailure.elapsed() < longestReopening;
    return m_reopening == Reopening::Patient && !isWaitOver ? longestReopening : shortestAttempt;
}

void Database::reopen()
{
    qCInfo(lcRecords).noquote() << "the connection to" << displayText() << "is made anew";
    ++m_generation;
    m_isBroken = false;
    try {
        reopenWithin(longestWait());
        m_sinceFailure.invalidate();
    } catch (const SqlError &) {
        if (m_reopening == Reopening::Patient)
            m_sinceFailure.start();
        throw;
    }
}

/// Milliseconds; at least one attempt.
void Database::reopenWithin(int longest)
{
    QElapsedTimer timer;
    timer.start();
    for (int pause = firstPause;; pause = std::min(2 * pause, longestPause)) {
        close();
        m_dialect->setConnectTimeout(longest - static_cast<int>(timer.elapsed()));
        try {
            open(Open::Existing);
            return;
        } catch (const SqlError &error) {
            const int left = longest - shortestAttempt - static_cast<int>(timer.elapsed());
            if (error.kind() != SqlError::Kind::Lost || left < firstPause)
                throw;
            pause = std::min(pause, left);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
    }
}

bool Database::recovers(const SqlError &error)
{
    if (error.kind() != SqlError::Kind::Lost || !m_dialect->isServer() || m_transactionDepth > 0 ||
        m_reopening == Reopening::Never)
        return false;
    reopen();
    return true;
}

SqlError Database::failure(const QSqlError &error, const QString &statement)
{
    m_isBroken = m_isBroken || (m_transactionDepth > 0 && m_dialect->errorEndsTransaction());
    return {m_dialect->kindOf(error), statement, error.databaseText()};
}

void Database::transactionGoesOn()
{
    m_isBroken = false;
    m_discarded.clear();
}

bool Database::needsTransaction(const QString &sql) const
{
    return m_dialect->isServer() && m_transactionDepth == 0 && isChange(sql);
}

bool Database::isChange(const QString &sql)
{
    const QStringRef text = QStringRef(&sql).trimmed();
    for (const char *verb : {"INSERT ", "UPDATE ", "DELETE "}) {
        if (text.startsWith(QLatin1String(verb), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

/// A server's forward-only result ends with the next statement. Those of the embedded engine
/// stand beside each other.
QSqlQuery Database::prepareOnce(const QString &sql, const QString &name, Result result)
{
    const QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
    if (!connection.isOpen())
        throw SqlError(SqlError::Kind::Lost, name.isEmpty() ? sql : name,
                       QStringLiteral("the connection is closed"));
    QSqlQuery query(connection);
    query.setForwardOnly(result == Result::Passing || !m_dialect->isServer());
    m_dialect->statementStarts();
    if (!query.prepare(sql))
        throw failure(query.lastError(), name.isEmpty() ? sql : name);
    return query;
}

QSqlQuery Database::prepared(const QString &sql, const QString &name, Result result)
{
    try {
        return prepareOnce(sql, name, result);
    } catch (const SqlError &error) {
        if (!recovers(error))
            throw;
    }
    return prepareOnce(sql, name, result);
}

SqlQuery Database::query(const char *name)
{
    const QString key = QLatin1String(name);
    QVector<QSqlQuery> &idle = m_idle[key];
    if (!idle.isEmpty())
        return {*this, idle.takeLast(), key};
    return {*this, prepared(m_catalog.statement(key), key), key};
}

SqlQuery Database::longQuery(const char *name)
{
    return {*this, prepared(m_catalog.statement(QLatin1String(name)), {}, Result::Passing), {}};
}

/// A server's result stays with its statement: a long one is not for keeping.
void Database::keep(const QString &name, const QSqlQuery &query)
{
    constexpr int mostRows = 1000;
    if (m_dialect->isServer() && query.size() > mostRows)
        discard(query);
    else
        m_idle[name].append(query);
}

/// A statement takes leave of the server when it goes: not in a broken transaction, where
/// no leave is taken, and when somebody is there to hear it.
void Database::discard(const QSqlQuery &query)
{
    if (!m_dialect->isServer())
        return;
    m_discarded.append(query);
    if (m_discarded.size() > mostDiscarded && !m_isBroken)
        m_discarded.clear();
}

SqlQuery Database::prepare(const QString &sql)
{
    return {*this, prepared(sql, {}), {}};
}

void Database::runOnce(const QString &sql)
{
    textOnce(sql, {});
}

QString Database::textOnce(const QString &sql, const QString &column)
{
    const QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
    if (!connection.isOpen())
        throw SqlError(SqlError::Kind::Lost, sql, QStringLiteral("the connection is closed"));
    QSqlQuery query(connection);
    query.setForwardOnly(!m_dialect->isServer());
    m_dialect->statementStarts();
    if (!query.exec(sql))
        throw failure(query.lastError(), sql);
    const int place = column.isEmpty() ? -1 : query.record().indexOf(column);
    return place >= 0 && query.next() ? query.value(place).toString() : QString();
}

void Database::run(const QString &sql)
{
    if (needsTransaction(sql)) {
        Transaction alone(*this);
        runOnce(sql);
        alone.commit();
        return;
    }
    try {
        runOnce(sql);
        return;
    } catch (const SqlError &error) {
        if (!recovers(error))
            throw;
    }
    runOnce(sql);
}

QString Database::displayText() const
{
    return m_dialect->placeText(m_settings);
}

} // namespace KODMS::Services
