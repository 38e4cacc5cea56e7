// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/PackedColumn.h"
#include "services/search/TextTest.h"

#include <optional>
#include <vector>

namespace KODMS::Services {

/// A condition in the index's own terms: columns by place, records of few as sets.
struct IndexCondition {
    enum class Kind {
        Everything,
        Nothing,
        All,
        Any,
        Id,         ///< the row's id is `number`
        IdText,     ///< the digits of the id meet `test`
        Number,     ///< the column's number is `number`
        NumberText, ///< its digits meet `test`
        Members,    ///< its number is a place in `members` that is not 0
        Text        ///< the column's text meets `test`
    };

    Kind kind = Kind::Everything;
    std::size_t column = 0;
    PackedColumn::Number number = 0;
    std::vector<std::uint8_t> members;
    std::optional<TextTest> test;
    std::vector<IndexCondition> children;

    /// What asking a segment costs, roughly: the cheap ones come first.
    int cost() const;

    /// Whether both say the same, word by word.
    bool operator==(const IndexCondition &other) const;

    /// Whether it is easily seen that rows which meet this one meet the other one, too.
    bool implies(const IndexCondition &other) const;
};

} // namespace KODMS::Services
