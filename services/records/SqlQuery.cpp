// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqlQuery.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"

#include <QSqlError>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

SqlQuery::SqlQuery(Database &database, const QSqlQuery &query, const QString &name)
    : m_database(&database), m_query(query), m_name(name), m_generation(database.generation())
{
}

SqlQuery::SqlQuery(SqlQuery &&other) noexcept
    : m_database(std::exchange(other.m_database, nullptr)), m_query(other.m_query),
      m_name(other.m_name), m_generation(other.m_generation), m_named(std::move(other.m_named)),
      m_placed(std::move(other.m_placed)), m_record(other.m_record),
      m_columns(std::move(other.m_columns))
{
}

SqlQuery::~SqlQuery()
{
    if (m_database == nullptr || isStale())
        return;
    m_query.finish();
    if (m_name.isEmpty())
        m_database->discard(m_query);
    else
        m_database->keep(m_name, m_query);
}

namespace {

/// A QString without text means an empty text; null is said with an empty QVariant.
QVariant boundValue(const QVariant &value)
{
    if (value.type() == QVariant::String && value.isNull())
        return QString(QLatin1String(""));
    if (value.type() == QVariant::Bool) // a column that says yes or no holds a number
        return value.toInt();
    return value;
}

} // namespace

/// A server knows no text with NUL. Such a text equals none that is stored there, and
/// null equals nothing; stored it cannot be.
QVariant SqlQuery::suited(const QVariant &value) const
{
    if (value.type() != QVariant::String || !value.toString().contains(QChar(0)))
        return value;
    if (Database::isChange(m_query.lastQuery()))
        throw SqlError(SqlError::Kind::Constraint, m_name,
                       QStringLiteral("a text with NUL cannot be stored"));
    return QVariant(QVariant::String);
}

SqlQuery &SqlQuery::bind(const char *name, const QVariant &value)
{
    QVariant bound = boundValue(value);
    if (m_database->dialect().isServer()) {
        bound = suited(bound);
        m_named.insert(name, bound);
    }
    m_query.bindValue(QLatin1String(name), bound);
    return *this;
}

SqlQuery &SqlQuery::bind(int position, const QVariant &value)
{
    QVariant bound = boundValue(value);
    if (m_database->dialect().isServer()) {
        bound = suited(bound);
        m_placed.resize(std::max(m_placed.size(), position + 1));
        m_placed[position] = bound;
    }
    m_query.bindValue(position, bound);
    return *this;
}

SqlQuery &SqlQuery::bindId(const char *name, int id)
{
    return bind(name, id == 0 ? QVariant(QVariant::Int) : QVariant(id));
}

bool SqlQuery::isStale() const
{
    return m_generation != m_database->generation();
}

const QSqlQuery &SqlQuery::current() const
{
    if (isStale())
        throw SqlError(SqlError::Kind::Lost, m_name,
                       QStringLiteral("the connection was lost before the result was read"));
    return m_query;
}

void SqlQuery::prepareAgain()
{
    QSqlQuery anew = m_database->prepared(m_query.lastQuery(), m_name,
                                          m_query.isForwardOnly() ? Database::Result::Passing
                                                                  : Database::Result::Kept);
    for (auto value = m_named.cbegin(); value != m_named.cend(); ++value)
        anew.bindValue(QString::fromLatin1(value.key()), value.value());
    for (int i = 0; i < m_placed.size(); ++i)
        anew.bindValue(i, m_placed.at(i));
    m_query = anew;
    m_record.clear();
    m_columns.clear();
    m_generation = m_database->generation();
}

void SqlQuery::execOnce()
{
    if (isStale())
        prepareAgain();
    m_database->dialect().statementStarts();
    if (!m_query.exec())
        fail();
}

/// A statement that a server has to know first has changed nothing when it does not.
SqlQuery &SqlQuery::exec()
{
    try {
        execSafely();
        return *this;
    } catch (const SqlError &) {
        if (m_database->isInTransaction() ||
            !m_database->dialect().hasForgottenStatement(m_query.lastError()))
            throw;
    }
    prepareAgain();
    execSafely();
    return *this;
}

/// A change as a transaction of its own; on a new connection when the old one is lost.
void SqlQuery::execSafely()
{
    if (m_database->needsTransaction(m_query.lastQuery())) {
        Transaction alone(*m_database);
        execOnce();
        alone.commit();
        return;
    }
    try {
        execOnce();
        return;
    } catch (const SqlError &error) {
        if (!m_database->recovers(error))
            throw;
    }
    execOnce();
}

bool SqlQuery::next()
{
    current();
    if (m_query.next())
        return true;
    if (m_query.lastError().isValid())
        fail();
    return false;
}

int SqlQuery::placeOf(const char *column) const
{
    const QByteArray key = QByteArray::fromRawData(column, static_cast<int>(qstrlen(column)));
    const auto known = m_columns.constFind(key);
    if (known != m_columns.constEnd())
        return *known;
    if (m_record.isEmpty()) // a driver makes it anew each time it is asked
        m_record = current().record();
    const int place = m_record.indexOf(QLatin1String(column));
    if (place < 0)
        throw SqlError(SqlError::Kind::Other, m_query.lastQuery(),
                       QStringLiteral("the result has no column ") + QLatin1String(column));
    m_columns.insert(QByteArray(column), place);
    return place;
}

QVariant SqlQuery::value(const char *column) const
{
    return valueAt(placeOf(column));
}

QString SqlQuery::text(const char *column) const
{
    return value(column).toString();
}

int SqlQuery::number(const char *column) const
{
    return value(column).toInt();
}

qint64 SqlQuery::int64(const char *column) const
{
    return value(column).toLongLong();
}

bool SqlQuery::isNull(const char *column) const
{
    return value(column).isNull();
}

void SqlQuery::fail() const
{
    throw m_database->failure(m_query.lastError(), m_name.isEmpty() ? m_query.lastQuery() : m_name);
}

} // namespace KODMS::Services
