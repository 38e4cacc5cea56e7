// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/BatchInsert.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"

#include <QStringList>

namespace KODMS::Services {

namespace {

constexpr int rowsOfJourney = 50;

QString repeated(const QString &part, int times)
{
    QStringList parts;
    for (int i = 0; i < times; ++i)
        parts << part;
    return parts.join(QLatin1Char(','));
}

} // namespace

BatchInsert::BatchInsert(Database &database, const char *table, const char *columns)
    : m_database(database), m_table(QLatin1String(table)), m_columns(QLatin1String(columns)),
      m_batch(database.dialect().isServer() ? rowsOfJourney : 1),
      m_insert(database.prepare(statement(m_batch)))
{
}

QString BatchInsert::statement(int rows) const
{
    const int columns = m_columns.count(QLatin1Char(',')) + 1;
    const QString row =
        QLatin1Char('(') + repeated(QStringLiteral("?"), columns) + QLatin1Char(')');
    return QStringLiteral("INSERT INTO %1 (%2) VALUES %3")
        .arg(m_table, m_columns, repeated(row, rows));
}

void BatchInsert::run(SqlQuery &query)
{
    for (int i = 0; i < m_values.size(); ++i)
        query.bind(i, m_values.at(i));
    query.exec();
    m_values.clear();
}

void BatchInsert::add(const QVector<QVariant> &values)
{
    m_values += values;
    if (m_values.size() == values.size() * m_batch)
        run(m_insert);
}

void BatchInsert::flush()
{
    if (m_values.isEmpty())
        return;
    const int columns = m_columns.count(QLatin1Char(',')) + 1;
    SqlQuery rest = m_database.prepare(statement(m_values.size() / columns));
    run(rest);
}

} // namespace KODMS::Services
