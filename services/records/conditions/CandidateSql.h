// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"
#include "services/records/conditions/SearchView.h"

#include <QString>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

class Dialect;

/// Index walks that a search can start from: each gives ids of rows, among them
/// every row that meets the whole condition.
class CandidateSql {
public:
    struct Walk {
        QString sql;
        QVector<QVariant> values;
        bool isEmpty = false; ///< was found to lead to no row
    };

    CandidateSql(const SearchView &view, const Dialect &dialect) : m_view(view), m_dialect(dialect)
    {
    }

    /// One for each part of the condition that has one.
    QVector<Walk> walks(const Condition &where) const;

private:
    /// Empty when there is no index for it.
    Walk walkOf(const Condition &condition) const;
    Walk unionOf(const Condition &any) const;
    Walk testWalk(const Condition &test) const;

    const SearchView &m_view;
    const Dialect &m_dialect;
};

} // namespace KODMS::Services
