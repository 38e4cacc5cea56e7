// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/CandidateSql.h"
#include "services/records/conditions/ConditionSql.h"
#include "services/records/conditions/SearchRequest.h"
#include "services/records/conditions/SearchView.h"

#include <QString>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

class Dialect;

/// The statements of one search. They name only the tables that the conditions
/// need; the rows themselves are read afterwards, by id.
class SearchSql {
public:
    struct Statement {
        QString sql;
        QVector<QVariant> values; ///< for the "?", in order
        bool isTooLarge = false;  ///< the engine would refuse it
    };

    /// `start`: the index walk to begin with; empty: all rows.
    SearchSql(const SearchView &view, const Dialect &dialect, CandidateSql::Walk start = {});

    /// Ids of the rows of the page, in order.
    Statement ids(const SearchRequest &request) const;

    /// One number: the rows that meet the condition.
    Statement count(const Condition &where) const;

    /// One number: about how many rows the view has, for nearly nothing.
    static Statement largestId(const SearchView &view);

    /// One number: the rows of the walk, counted up to `most`.
    static Statement walkLength(const CandidateSql::Walk &walk, int most);

private:
    Statement selection(const QString &result, const Condition &where, unsigned moreTables,
                        ConditionSql::Way way) const;
    QString joins(unsigned tables) const;
    QString order(const SearchRequest &request) const;

    const SearchView &m_view;
    const Dialect &m_dialect;
    CandidateSql::Walk m_start;
};

} // namespace KODMS::Services
