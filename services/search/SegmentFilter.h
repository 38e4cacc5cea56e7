// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexCondition.h"
#include "services/search/IndexSegment.h"

namespace KODMS::Services {

/// Finds the rows of a segment that meet a condition. One for each search: it
/// remembers which numbers have digits that meet a test.
class SegmentFilter {
public:
    explicit SegmentFilter(const IndexCondition &condition);

    RowBits rows(const IndexSegment &segment) const;

private:
    /// The condition again, with what is worked out while searching.
    struct Node {
        const IndexCondition *condition;
        std::vector<Node> children;
        mutable std::vector<std::uint8_t> known; ///< of the smallest numbers: 1 meets the test
    };

    static Node prepare(const IndexCondition &condition);
    static void keep(const Node &node, const IndexSegment &segment, RowBits &rows);
    static void keepAny(const Node &node, const IndexSegment &segment, RowBits &rows);
    static void keepDigits(const Node &node, const PackedColumn &column, RowBits &rows);
    static bool meets(const Node &node, PackedColumn::Number number);

    Node m_root;
};

} // namespace KODMS::Services
