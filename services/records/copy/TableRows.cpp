// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/TableRows.h"

#include "services/records/Database.h"

#include <limits>

namespace KODMS::Services {

namespace {

QString keyOf(const CopiedTable &table)
{
    switch (table.key) {
    case CopiedTable::Key::Counted:
        return QStringLiteral("id");
    case CopiedTable::Key::Flow:
        return QStringLiteral("flow_id");
    case CopiedTable::Key::Other:
        break;
    }
    return {};
}

QString statementFor(const CopiedTable &table, const QStringList &columns)
{
    const QString rows = QStringLiteral("SELECT %1 FROM %2")
                             .arg(columns.join(QStringLiteral(", ")), QLatin1String(table.name));
    const QString key = keyOf(table);
    if (key.isEmpty())
        return rows;
    return rows + QStringLiteral(" WHERE %1 > ? ORDER BY %1 LIMIT ?").arg(key);
}

} // namespace

QStringList TableRows::columnsOf(Database &database, const CopiedTable &table)
{
    QStringList columns;
    SqlQuery query = database.query("select_columns");
    query.bind(":table", QLatin1String(table.name)).exec();
    while (query.next())
        columns << query.text("name");
    return columns;
}

TableRows::TableRows(Database &database, const CopiedTable &table, const QStringList &columns)
    : m_query(database.prepare(statementFor(table, columns))), m_columns(columns),
      m_keyPlace(columns.indexOf(keyOf(table))), m_values(columns.size())
{
    m_lastKey = std::numeric_limits<int>::min();
    if (isPaged())
        m_query.bind(0, m_lastKey).bind(1, page);
    m_query.exec();
}

bool TableRows::next()
{
    if (!m_query.next()) {
        if (!isPaged() || m_read < page)
            return false;
        m_read = 0;
        m_query.bind(0, m_lastKey).bind(1, page).exec();
        if (!m_query.next())
            return false;
    }
    ++m_read;
    for (int i = 0; i < m_columns.size(); ++i)
        m_values[i] = m_query.valueAt(i);
    if (isPaged())
        m_lastKey = m_values.at(m_keyPlace).toLongLong();
    return true;
}

} // namespace KODMS::Services
