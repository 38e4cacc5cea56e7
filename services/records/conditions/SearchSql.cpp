// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/SearchSql.h"

#include "services/records/Dialect.h"

#include <utility>

namespace KODMS::Services {

namespace {

constexpr int highestExpression = 900; // engines stop at 1,000
constexpr int longestStatement = 900000;
constexpr int mostValues = 30000;

} // namespace

SearchSql::SearchSql(const SearchView &view, const Dialect &dialect, CandidateSql::Walk start)
    : m_view(view), m_dialect(dialect), m_start(std::move(start))
{
}

QString SearchSql::joins(unsigned tables) const
{
    QString text;
    for (const SearchView::Join &join : m_view.joins) {
        if ((tables & join.bit) != 0)
            text += QLatin1Char(' ') + QLatin1String(join.clause);
    }
    return text;
}

SearchSql::Statement SearchSql::selection(const QString &result, const Condition &where,
                                          unsigned moreTables, ConditionSql::Way way) const
{
    ConditionSql condition(m_view, m_dialect,
                           m_start.sql.isEmpty() ? way : ConditionSql::Way::Walk);
    const QString expression = condition.write(where);
    QStringList tests;
    if (!m_start.sql.isEmpty())
        tests << QLatin1String(m_view.id) + QStringLiteral(" IN (") + m_start.sql +
                     QLatin1Char(')');
    if (where.kind != Condition::Kind::Everything)
        tests << QLatin1Char('(') + expression + QLatin1Char(')');
    Statement statement;
    statement.sql = QStringLiteral("SELECT ") + result + QStringLiteral(" FROM ") +
                    QLatin1String(m_view.table) +
                    joins(m_view.closure(condition.tables() | moreTables));
    if (!tests.isEmpty())
        statement.sql += QStringLiteral(" WHERE ") + tests.join(QStringLiteral(" AND "));
    statement.values = m_start.values + condition.values();
    statement.isTooLarge = condition.height() > highestExpression ||
                           statement.sql.size() > longestStatement ||
                           statement.values.size() > mostValues;
    return statement;
}

SearchSql::Statement SearchSql::count(const Condition &where) const
{
    return selection(QStringLiteral("count(*) AS total"), where, 0, ConditionSql::Way::Free);
}

SearchSql::Statement SearchSql::largestId(const SearchView &view)
{
    return {QStringLiteral("SELECT MAX(%1) AS total FROM %2")
                .arg(QLatin1String(view.id), QLatin1String(view.table)),
            {},
            false};
}

SearchSql::Statement SearchSql::walkLength(const CandidateSql::Walk &walk, int most)
{
    return {QStringLiteral("SELECT count(*) AS total FROM (SELECT 1 FROM (%1) w LIMIT %2) l")
                .arg(walk.sql)
                .arg(most),
            walk.values, false};
}

QString SearchSql::order(const SearchRequest &request) const
{
    const QString id = QLatin1String(m_view.id);
    const QString direction =
        request.isDescending ? QStringLiteral(" DESC") : QStringLiteral(" ASC");
    QString text = QStringLiteral(" ORDER BY ");
    if (request.orderBy != nullptr && id != QLatin1String(request.orderBy->column)) {
        const QString nulls =
            request.orderBy->isNeverNull ? QString() : m_dialect.nullsOrder(request.isDescending);
        text += QLatin1String(request.orderBy->column) + direction + nulls + QStringLiteral(", ");
    }
    return text + id + direction;
}

SearchSql::Statement SearchSql::ids(const SearchRequest &request) const
{
    const unsigned orderTables = request.orderBy != nullptr ? request.orderBy->tables : 0;
    Statement statement = selection(QLatin1String(m_view.id) + QStringLiteral(" AS id"),
                                    request.where, orderTables, ConditionSql::Way::Order);
    statement.sql += order(request);
    if (request.page) {
        statement.sql += QStringLiteral(" LIMIT ? OFFSET ?");
        statement.values << request.page->size << request.page->offset;
    }
    return statement;
}

} // namespace KODMS::Services
