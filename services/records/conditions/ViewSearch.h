// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"
#include "services/records/conditions/SearchSql.h"
#include "services/records/conditions/SearchView.h"

#include <QVector>

#include <vector>

namespace KODMS::Services {

class Database;
class RecordContext;

/// One search of a view: understands both lists, adds what the acting user may
/// see, and finds ids and count: from the index when there is one that knows the
/// answer, else by statements.
class ViewSearch {
public:
    using List = std::vector<DataLib::Model::DB_Search>;

    ViewSearch(RecordContext &context, const SearchView &view);

    /// False when a list cannot be understood; problem() says why, in English.
    /// Throws SqlError when the database fails.
    bool run(const List &conditions, const List &countConditions);

    /// By the index alone, also outside of transactions. False when it does not answer.
    bool runByIndex(const List &conditions, const List &countConditions);

    /// Of the state that the index has answered for, where the engine tells it.
    const QString &moment() const { return m_moment; }

    const QVector<int> &ids() const { return m_ids; }

    int totalCount() const { return m_totalCount; }

    const QString &problem() const { return m_problem; }

private:
    bool readLists(const List &conditions, const List &countConditions);
    bool askIndex();
    bool searchTogether();
    bool searchApart();
    bool findPage(const CandidateSql::Walk &start);
    bool countRows(const CandidateSql::Walk &start);
    bool readIds(const SearchSql::Statement &statement);
    bool check(const SearchSql::Statement &statement);
    CandidateSql::Walk bestStart(const Condition &where);

    RecordContext &m_context;
    const SearchView &m_view;
    Database &m_database;
    SearchRequest m_request;
    Condition m_countWhere;
    QVector<int> m_ids;
    int m_totalCount = 0;
    QString m_moment;
    QString m_problem;
};

} // namespace KODMS::Services
