// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/SearchSql.h"

#include "services/records/conditions/ConditionSql.h"

namespace KODMS::Services {

namespace {

constexpr int highestExpression = 900; // engines stop at 1,000
constexpr int longestStatement = 900000;
constexpr int mostValues = 30000;

} // namespace

SearchSql::Statement SearchSql::selection(const QString &result, const Condition &where,
                                          unsigned moreTables) const
{
    ConditionSql condition(m_dialect);
    const QString expression = condition.write(where);
    const unsigned tables = m_view.closure(condition.tables() | moreTables);
    Statement statement;
    statement.sql =
        QStringLiteral("SELECT ") + result + QStringLiteral(" FROM ") + QLatin1String(m_view.table);
    for (const SearchView::Join &join : m_view.joins) {
        if ((tables & join.bit) != 0)
            statement.sql += QLatin1Char(' ') + QLatin1String(join.clause);
    }
    if (where.kind != Condition::Kind::Everything)
        statement.sql += QStringLiteral(" WHERE ") + expression;
    statement.values = condition.values();
    statement.isTooLarge = condition.height() > highestExpression ||
                           statement.sql.size() > longestStatement ||
                           statement.values.size() > mostValues;
    return statement;
}

SearchSql::Statement SearchSql::count(const Condition &where) const
{
    return selection(QStringLiteral("count(*) AS total"), where, 0);
}

QString SearchSql::order(const SearchRequest &request) const
{
    const QString id = QLatin1String(m_view.id);
    const QString direction =
        request.isDescending ? QStringLiteral(" DESC") : QStringLiteral(" ASC");
    QString text = QStringLiteral(" ORDER BY ");
    if (request.orderBy != nullptr && id != QLatin1String(request.orderBy->column))
        text += QLatin1String(request.orderBy->column) + direction + QStringLiteral(", ");
    return text + id + direction;
}

SearchSql::Statement SearchSql::ids(const SearchRequest &request) const
{
    const unsigned orderTables = request.orderBy != nullptr ? request.orderBy->tables : 0;
    Statement statement =
        selection(QLatin1String(m_view.id) + QStringLiteral(" AS id"), request.where, orderTables);
    statement.sql += order(request);
    if (request.page) {
        statement.sql += QStringLiteral(" LIMIT ? OFFSET ?");
        statement.values << request.page->size << request.page->offset;
    }
    return statement;
}

} // namespace KODMS::Services
