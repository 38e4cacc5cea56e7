// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/SegmentFilter.h"

#include <algorithm>
#include <numeric>

namespace KODMS::Services {

SegmentFilter::SegmentFilter(const IndexCondition &condition) : m_root(prepare(condition)) {}

SegmentFilter::Node SegmentFilter::prepare(const IndexCondition &condition)
{
    Node node;
    node.condition = &condition;
    node.cost = condition.cost();
    for (const IndexCondition &child : condition.children)
        node.children.push_back(prepare(child));
    std::stable_sort(node.children.begin(), node.children.end(),
                     [](const Node &a, const Node &b) { return a.cost < b.cost; });
    node.order.resize(node.children.size());
    std::iota(node.order.begin(), node.order.end(), std::size_t{0});
    return node;
}

RowBits SegmentFilter::rows(const IndexSegment &segment) const
{
    RowBits rows = RowBits::first(segment.size());
    keep(m_root, segment, rows);
    return rows;
}

void SegmentFilter::keep(const Node &node, const IndexSegment &segment, RowBits &rows)
{
    const IndexCondition &condition = *node.condition;
    switch (condition.kind) {
    case IndexCondition::Kind::Everything:
        return;
    case IndexCondition::Kind::Nothing:
        rows = {};
        return;
    case IndexCondition::Kind::All:
        return keepAll(node, segment, rows);
    case IndexCondition::Kind::Any:
        return keepAny(node, segment, rows);
    case IndexCondition::Kind::Id:
        return segment.ids().keepEqual(condition.number, rows);
    case IndexCondition::Kind::IdText:
        return keepDigits(node, segment.ids(), rows);
    case IndexCondition::Kind::Number:
        return segment.numbers(condition.column).keepEqual(condition.number, rows);
    case IndexCondition::Kind::NumberText:
        return keepDigits(node, segment.numbers(condition.column), rows);
    case IndexCondition::Kind::Members:
        return segment.numbers(condition.column).keepMembers(condition.members, rows);
    case IndexCondition::Kind::Text:
        return segment.texts(condition.column).keepMatching(*condition.test, rows);
    }
}

/// What has sorted out the most for its cost so far comes first, and leaves the others less.
void SegmentFilter::keepAll(const Node &node, const IndexSegment &segment, RowBits &rows)
{
    int left = rows.count();
    for (const std::size_t place : node.order) {
        if (left == 0)
            break;
        const Node &child = node.children[place];
        child.asked += left;
        keep(child, segment, rows);
        left = rows.count();
        child.kept += left;
    }
    std::stable_sort(node.order.begin(), node.order.end(), [&node](std::size_t a, std::size_t b) {
        return node.children[a].price() < node.children[b].price();
    });
}

/// Each alternative is asked for the rows that no former one has found.
void SegmentFilter::keepAny(const Node &node, const IndexSegment &segment, RowBits &rows)
{
    RowBits found;
    for (const Node &child : node.children) {
        RowBits part = rows;
        part.remove(found);
        if (part.isEmpty())
            break;
        keep(child, segment, part);
        found.add(part);
    }
    rows = found;
}

/// Small numbers are few and come again in every segment.
void SegmentFilter::keepDigits(const Node &node, const PackedColumn &column, RowBits &rows)
{
    constexpr PackedColumn::Number mostKnown = 1 << 16;
    if (column.smallest() >= 0 && column.largest() < mostKnown) {
        const auto needed = static_cast<std::size_t>(column.largest()) + 1;
        for (std::size_t number = node.known.size(); number < needed; ++number)
            node.known.push_back(meets(node, static_cast<PackedColumn::Number>(number)) ? 1 : 0);
        column.keepMembers(node.known, rows);
        return;
    }
    RowBits kept;
    rows.forEach([&](int row) {
        if (meets(node, column.at(row)))
            kept.add(row);
    });
    rows = kept;
}

bool SegmentFilter::meets(const Node &node, PackedColumn::Number number)
{
    return number != PackedColumn::none && node.condition->test->matches(std::to_string(number));
}

} // namespace KODMS::Services
