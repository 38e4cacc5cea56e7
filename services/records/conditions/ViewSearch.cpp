// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/ViewSearch.h"

#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/conditions/ConditionReader.h"
#include "services/records/conditions/UserScope.h"

#include <utility>

namespace KODMS::Services {

namespace {

using List = std::vector<DataLib::Model::DB_Search>;

SqlQuery execute(Database &database, const SearchSql::Statement &statement)
{
    SqlQuery query = database.prepare(statement.sql);
    for (int i = 0; i < statement.values.size(); ++i)
        query.bind(i, statement.values.at(i));
    query.exec();
    return query;
}

} // namespace

ViewSearch::ViewSearch(RecordContext &context, const SearchView &view)
    : m_context(context), m_view(view)
{
}

bool ViewSearch::readLists(const List &conditions, const List &countConditions)
{
    const Condition scope = UserScope::of(m_view, m_context.actor());
    ConditionReader reader(m_view);
    if (!reader.read(conditions)) {
        m_problem = reader.problem();
        return false;
    }
    m_request = reader.request();
    if (!reader.read(countConditions)) {
        m_problem = reader.problem();
        return false;
    }
    m_request.where = Condition::all({m_request.where, scope});
    m_countWhere = Condition::all({reader.request().where, scope});
    return true;
}

bool ViewSearch::run(const List &conditions, const List &countConditions)
{
    m_ids.clear();
    m_totalCount = 0;
    return readLists(conditions, countConditions) && countRows() && findIds();
}

bool ViewSearch::checkSize(const SearchSql::Statement &statement)
{
    if (statement.isTooLarge)
        m_problem = QStringLiteral("the list is too long for one statement");
    return !statement.isTooLarge;
}

bool ViewSearch::countRows()
{
    if (m_countWhere.kind == Condition::Kind::Nothing)
        return true;
    Database &database = m_context.database();
    const SearchSql::Statement statement =
        SearchSql(m_view, database.dialect()).count(m_countWhere);
    if (!checkSize(statement))
        return false;
    SqlQuery query = execute(database, statement);
    query.next();
    m_totalCount = query.number("total");
    return true;
}

bool ViewSearch::findIds()
{
    const bool isEmptyForSure = m_request.where.kind == Condition::Kind::Nothing ||
                                (m_request.where == m_countWhere && m_request.page &&
                                 m_request.page->offset >= m_totalCount);
    if (isEmptyForSure)
        return true;
    Database &database = m_context.database();
    const SearchSql::Statement statement = SearchSql(m_view, database.dialect()).ids(m_request);
    if (!checkSize(statement))
        return false;
    SqlQuery query = execute(database, statement);
    while (query.next())
        m_ids << query.number("id");
    return true;
}

} // namespace KODMS::Services
