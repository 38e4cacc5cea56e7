// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/RowInserter.h"

#include "services/records/Database.h"

namespace KODMS::Services {

namespace {

constexpr int together = 100;

/// A text's null would be taken for an empty text.
QVariant bound(const QVariant &value)
{
    return value.isNull() ? QVariant() : value;
}

} // namespace

RowInserter::RowInserter(Database &database, const CopiedTable &table, const QStringList &columns)
    : m_database(database)
{
    QStringList marks;
    for (int i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    m_start = QStringLiteral("INSERT INTO %1 (%2) VALUES ")
                  .arg(QLatin1String(table.name), columns.join(QStringLiteral(", ")));
    m_marks = QLatin1Char('(') + marks.join(QStringLiteral(", ")) + QLatin1Char(')');
}

void RowInserter::add(const QVector<QVariant> &row)
{
    m_values += row;
    if (++m_waiting == together)
        flush();
}

void RowInserter::flush()
{
    if (m_waiting > 0)
        insert(m_waiting);
    m_values.clear();
    m_waiting = 0;
}

void RowInserter::insert(int rows)
{
    QStringList marks;
    for (int i = 0; i < rows; ++i)
        marks << m_marks;
    SqlQuery query = m_database.prepare(m_start + marks.join(QStringLiteral(", ")));
    for (int i = 0; i < m_values.size(); ++i)
        query.bind(i, bound(m_values.at(i)));
    query.exec();
}

} // namespace KODMS::Services
