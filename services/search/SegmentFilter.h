// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexCondition.h"
#include "services/search/IndexSegment.h"

namespace KODMS::Services {

/// Finds the rows of a segment that meet a condition. One for each search: it
/// remembers which numbers have digits that meet a test, and which of several conditions
/// leaves the fewest rows for its cost, to ask it first in the next segment.
class SegmentFilter {
public:
    explicit SegmentFilter(const IndexCondition &condition);

    RowBits rows(const IndexSegment &segment) const;

private:
    /// The condition again, with what is worked out while searching.
    struct Node {
        const IndexCondition *condition = nullptr;
        std::vector<Node> children;
        double cost = 0;
        mutable std::vector<std::uint8_t> known; ///< of the smallest numbers: 1 meets the test
        mutable std::vector<std::size_t> order;  ///< of the children
        mutable double asked = 0;                ///< rows so far
        mutable double kept = 0;

        /// Cost for each row that is sorted out.
        double price() const { return cost * (asked + 1) / (asked - kept + 1); }
    };

    static Node prepare(const IndexCondition &condition);
    static void keep(const Node &node, const IndexSegment &segment, RowBits &rows);
    static void keepAll(const Node &node, const IndexSegment &segment, RowBits &rows);
    static void keepAny(const Node &node, const IndexSegment &segment, RowBits &rows);
    static void keepDigits(const Node &node, const PackedColumn &column, RowBits &rows);
    static bool meets(const Node &node, PackedColumn::Number number);

    Node m_root;
};

} // namespace KODMS::Services
