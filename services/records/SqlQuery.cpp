// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqlQuery.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"

#include <QSqlError>
#include <QSqlRecord>

#include <utility>

namespace KODMS::Services {

SqlQuery::SqlQuery(Database &database, const QSqlQuery &query, const QString &name)
    : m_database(&database), m_query(query), m_name(name)
{
}

SqlQuery::SqlQuery(SqlQuery &&other) noexcept
    : m_database(std::exchange(other.m_database, nullptr)), m_query(other.m_query),
      m_name(other.m_name), m_columns(std::move(other.m_columns))
{
}

SqlQuery::~SqlQuery()
{
    if (m_database == nullptr)
        return;
    m_query.finish();
    if (!m_name.isEmpty())
        m_database->keep(m_name, m_query);
}

namespace {

/// A QString without text means an empty text; null is said with an empty QVariant.
QVariant boundValue(const QVariant &value)
{
    if (value.type() == QVariant::String && value.isNull())
        return QString(QLatin1String(""));
    return value;
}

} // namespace

SqlQuery &SqlQuery::bind(const char *name, const QVariant &value)
{
    m_query.bindValue(QLatin1String(name), boundValue(value));
    return *this;
}

SqlQuery &SqlQuery::bind(int position, const QVariant &value)
{
    m_query.bindValue(position, boundValue(value));
    return *this;
}

SqlQuery &SqlQuery::bindId(const char *name, int id)
{
    return bind(name, id == 0 ? QVariant(QVariant::Int) : QVariant(id));
}

SqlQuery &SqlQuery::exec()
{
    m_database->dialect().statementStarts();
    if (!m_query.exec())
        fail();
    return *this;
}

bool SqlQuery::next()
{
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
    const int place = m_query.record().indexOf(QLatin1String(column));
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

qint64 SqlQuery::lastInsertId() const
{
    return m_query.lastInsertId().toLongLong();
}

void SqlQuery::fail() const
{
    const QSqlError error = m_query.lastError();
    throw SqlError(m_database->dialect().kindOf(error),
                   m_name.isEmpty() ? m_query.lastQuery() : m_name, error.databaseText());
}

} // namespace KODMS::Services
