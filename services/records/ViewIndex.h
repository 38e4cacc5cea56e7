// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
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
        QString moment; ///< of the state that the answer is of, where the engine tells it
    };

    virtual ~ViewIndex() = default;

    /// True when it is likely to answer. Asks no database.
    virtual bool isReady() = 0;

    /// In the search's reading transaction, whose state the answer is of, or outside of
    /// transactions. Nothing when the statements have to answer: this question, or for now.
    /// They also say what is wrong when the database fails.
    virtual std::optional<Answer> find(Database &database, const SearchView &view,
                                       const SearchRequest &request,
                                       const Condition &countWhere) = 0;
};

} // namespace KODMS::Services
