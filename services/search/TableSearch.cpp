// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TableSearch.h"

#include "services/search/SegmentFilter.h"

#include <algorithm>
#include <functional>

namespace KODMS::Services {

void TableSearch::run(const IndexCondition &condition, const Window &window)
{
    m_count = 0;
    m_ids.clear();
    const SegmentFilter filter(condition);
    const std::vector<IndexSegment> &segments = m_table.segments();
    if (window.order == Order::Time && window.isDescending) {
        for (auto segment = segments.rbegin(); segment != segments.rend(); ++segment)
            visit(*segment, filter.rows(*segment), window);
    } else {
        for (const IndexSegment &segment : segments)
            visit(segment, filter.rows(segment), window);
    }
    if (window.order == Order::Id)
        cutOut(window);
}

void TableSearch::visit(const IndexSegment &segment, const RowBits &rows, const Window &window)
{
    const std::int64_t before = m_count;
    m_count += rows.count();
    // The rows with the ranks from offset on, as many as the page has.
    const bool hasStarted = m_count > window.offset;
    const bool isOver = before >= window.offset && before - window.offset >= window.size;
    if (window.order == Order::Id)
        takeAll(segment, rows);
    else if (hasStarted && !isOver)
        take(segment, rows, window);
}

void TableSearch::takeAll(const IndexSegment &segment, const RowBits &rows)
{
    rows.forEach([&](int row) { m_ids.push_back(segment.idAt(row)); });
}

void TableSearch::take(const IndexSegment &segment, const RowBits &rows, const Window &window)
{
    std::vector<int> found;
    rows.forEach([&found](int row) { found.push_back(row); });
    if (window.isDescending)
        std::reverse(found.begin(), found.end());
    const std::int64_t before = m_count - static_cast<std::int64_t>(found.size());
    auto rank = std::max<std::int64_t>(0, window.offset - before);
    for (; rank < static_cast<std::int64_t>(found.size()); ++rank) {
        if (static_cast<std::int64_t>(m_ids.size()) == window.size)
            return;
        m_ids.push_back(segment.idAt(found[static_cast<std::size_t>(rank)]));
    }
}

void TableSearch::cutOut(const Window &window)
{
    const auto size = static_cast<std::int64_t>(m_ids.size());
    const std::int64_t start = std::min(window.offset, size);
    const std::int64_t end = start + std::min(window.size, size - start);
    const auto middle = m_ids.begin() + static_cast<std::ptrdiff_t>(end);
    if (window.isDescending)
        std::partial_sort(m_ids.begin(), middle, m_ids.end(), std::greater<>());
    else
        std::partial_sort(m_ids.begin(), middle, m_ids.end());
    m_ids.erase(middle, m_ids.end());
    m_ids.erase(m_ids.begin(), m_ids.begin() + static_cast<std::ptrdiff_t>(start));
}

} // namespace KODMS::Services
