// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/ViewSearch.h"

#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/ViewIndex.h"
#include "services/records/conditions/ConditionReader.h"
#include "services/records/conditions/UserScope.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

/// A walk that gives more rows than these is no faster than looking at all of them in
/// the desk's order: a part of the table, and never more than so many.
constexpr int partOfTable = 16;
constexpr int longestWalk = 30000;

SqlQuery execute(Database &database, const SearchSql::Statement &statement)
{
    SqlQuery query = database.prepare(statement.sql);
    for (int i = 0; i < statement.values.size(); ++i)
        query.bind(i, statement.values.at(i));
    query.exec();
    return query;
}

int executeCount(Database &database, const SearchSql::Statement &statement)
{
    SqlQuery query = execute(database, statement);
    query.next();
    return query.number("total");
}

} // namespace

ViewSearch::ViewSearch(RecordContext &context, const SearchView &view)
    : m_context(context), m_view(view), m_database(context.database())
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

bool ViewSearch::runByIndex(const List &conditions, const List &countConditions)
{
    return readLists(conditions, countConditions) && askIndex();
}

bool ViewSearch::run(const List &conditions, const List &countConditions)
{
    m_ids.clear();
    m_totalCount = 0;
    if (!readLists(conditions, countConditions))
        return false;
    if (askIndex())
        return true;
    return m_request.where == m_countWhere ? searchTogether() : searchApart();
}

bool ViewSearch::askIndex()
{
    ViewIndex *index = m_context.viewIndex();
    if (index == nullptr)
        return false;
    const auto answer = index->find(m_database, m_view, m_request, m_countWhere);
    if (!answer)
        return false;
    m_ids = answer->ids;
    m_totalCount = answer->totalCount;
    m_moment = answer->moment;
    return true;
}

/// Both lists ask for the same rows, as the desks' lists do: a page that is not full
/// says how many rows there are, and the second look at the table is saved.
bool ViewSearch::searchTogether()
{
    if (m_request.where.kind == Condition::Kind::Nothing)
        return true;
    const CandidateSql::Walk start = bestStart(m_request.where);
    if (start.isEmpty)
        return true;
    if (!findPage(start))
        return false;
    const qint64 offset = m_request.page ? m_request.page->offset : 0;
    const bool isLastPage = !m_request.page || m_ids.size() < m_request.page->size;
    if (!isLastPage || (m_ids.isEmpty() && offset > 0))
        return countRows(start);
    m_totalCount = static_cast<int>(offset) + m_ids.size();
    return true;
}

bool ViewSearch::searchApart()
{
    return (m_countWhere.kind == Condition::Kind::Nothing || countRows(bestStart(m_countWhere))) &&
           (m_request.where.kind == Condition::Kind::Nothing ||
            findPage(bestStart(m_request.where)));
}

bool ViewSearch::check(const SearchSql::Statement &statement)
{
    if (statement.isTooLarge)
        m_problem = QStringLiteral("the list is too long for one statement");
    return !statement.isTooLarge;
}

bool ViewSearch::readIds(const SearchSql::Statement &statement)
{
    if (!check(statement))
        return false;
    SqlQuery query = execute(m_database, statement);
    while (query.next())
        m_ids << query.number("id");
    return true;
}

bool ViewSearch::countRows(const CandidateSql::Walk &start)
{
    const SearchSql::Statement statement =
        SearchSql(m_view, m_database.dialect(), start).count(m_countWhere);
    if (!check(statement))
        return false;
    m_totalCount = executeCount(m_database, statement);
    return true;
}

bool ViewSearch::findPage(const CandidateSql::Walk &start)
{
    return readIds(SearchSql(m_view, m_database.dialect(), start).ids(m_request));
}

/// The shortest index walk that leads to all rows of the condition, if it is short.
CandidateSql::Walk ViewSearch::bestStart(const Condition &where)
{
    CandidateSql::Walk best;
    const auto walks = CandidateSql(m_view, m_database.dialect()).walks(where);
    if (walks.isEmpty())
        return best;
    const int rows = executeCount(m_database, SearchSql::largestId(m_view));
    int shortest = std::min(rows / partOfTable, longestWalk);
    for (const CandidateSql::Walk &walk : walks) {
        const int length = executeCount(m_database, SearchSql::walkLength(walk, shortest));
        if (length >= shortest)
            continue;
        shortest = length;
        best = walk;
        best.isEmpty = length == 0;
        if (best.isEmpty)
            break;
    }
    return best;
}

} // namespace KODMS::Services
