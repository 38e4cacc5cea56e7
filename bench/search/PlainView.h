// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/search/SearchCases.h"
#include "services/records/Database.h"

#include <QVariant>
#include <QVector>

namespace KODMS::Bench {

/// What one would write without further thought: the view, LIKE for every fuzzy
/// condition, ORDER BY and LIMIT; and count(*) of the same. The acting user's scope
/// included.
class PlainView {
public:
    PlainView(Services::Database &database, const SearchCase &searchCase);

    /// Reads the page's rows with all columns and the count; returns both numbers.
    std::pair<int, int> run(const List &list);

private:
    QString where(const List &list);
    QString scope() const;

    Services::Database &m_database;
    const SearchCase &m_case;
    QVector<QVariant> m_values;
};

} // namespace KODMS::Bench
