// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

#include <optional>

namespace KODMS::Services {

struct Condition;
class Database;
class SearchView;
struct SearchRequest;

/// Answers searches without the statements. It knows the conditions, the scope among
/// them, as trees, and gives what the statements would give. In the thread of the records.
class ViewIndex {
public:
    struct Answer {
        QVector<int> ids; ///< of the page, in order
        int totalCount = 0;
    };

    virtual ~ViewIndex() = default;

    /// In the search's reading transaction, whose state the answer is of. Nothing when the
    /// statements have to answer: this question, or for now. They also say what is wrong
    /// when the database fails.
    virtual std::optional<Answer> find(Database &database, const SearchView &view,
                                       const SearchRequest &request,
                                       const Condition &countWhere) = 0;
};

} // namespace KODMS::Services
