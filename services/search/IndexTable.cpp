// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexTable.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace KODMS::Services {

namespace {

IndexSegment::Key keyOf(const IndexRow &row)
{
    return {row.time, row.id};
}

} // namespace

IndexTable::IndexTable(std::size_t numbers, std::size_t texts, int segmentRows)
    : m_numbers(numbers), m_texts(texts), m_segmentRows(static_cast<std::size_t>(segmentRows))
{
}

void IndexTable::append(IndexRow row)
{
    m_waiting.push_back(std::move(row));
    if (m_waiting.size() == m_segmentRows)
        flush();
}

void IndexTable::flush()
{
    std::vector<IndexSegment::Source> sources(m_waiting.size());
    for (std::size_t i = 0; i < sources.size(); ++i)
        sources[i] = ~static_cast<int>(i);
    addSegments(IndexSegment(m_numbers, m_texts), m_waiting, sources, true);
    m_waiting.clear();
}

/// The first segment that ends at the key or behind it, else the last one.
std::size_t IndexTable::segmentFor(const IndexSegment::Key &key) const
{
    const auto found = std::lower_bound(m_segments.begin(), m_segments.end(), key,
                                        [](const IndexSegment &segment, const auto &wanted) {
                                            return segment.keyAt(segment.size() - 1) < wanted;
                                        });
    const auto place = static_cast<std::size_t>(found - m_segments.begin());
    return std::min(place, m_segments.size() - 1);
}

std::vector<IndexTable::Edit> IndexTable::edits(const std::vector<Change> &changes,
                                                const std::vector<IndexRow> &rows) const
{
    std::vector<Edit> edits(m_segments.size());
    for (std::size_t place = 0; place < m_segments.size(); ++place) {
        for (const Change &change : changes) {
            const int row = m_segments[place].find(change.id);
            if (row >= 0)
                edits[place].gone.push_back(row);
        }
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        edits[segmentFor(keyOf(rows[i]))].added.push_back(i);
    return edits;
}

std::vector<IndexSegment::Source> IndexTable::sources(const IndexSegment &segment, const Edit &edit,
                                                      const std::vector<IndexRow> &rows)
{
    RowBits stay = RowBits::first(segment.size());
    RowBits gone;
    for (const int row : edit.gone)
        gone.add(row);
    stay.remove(gone);
    std::vector<IndexSegment::Source> sources;
    std::size_t next = 0;
    const auto addUpTo = [&](const IndexSegment::Key &key) {
        for (; next < edit.added.size() && keyOf(rows[edit.added[next]]) < key; ++next)
            sources.push_back(~static_cast<int>(edit.added[next]));
    };
    stay.forEach([&](int row) {
        if (next < edit.added.size())
            addUpTo(segment.keyAt(row));
        sources.push_back(row);
    });
    for (; next < edit.added.size(); ++next)
        sources.push_back(~static_cast<int>(edit.added[next]));
    return sources;
}

/// Rows that stay where they are, as most changed ones do, need no new segment, unless they are
/// so many that one is made in less time.
bool IndexTable::replaceInPlace(IndexSegment &segment, Edit &edit,
                                const std::vector<IndexRow> &rows)
{
    constexpr std::size_t mostReplaced = 6;
    std::sort(edit.gone.begin(), edit.gone.end());
    const bool areFew = edit.gone.size() <= mostReplaced;
    const bool isSame = areFew && std::equal(edit.gone.begin(), edit.gone.end(), edit.added.begin(),
                                             edit.added.end(), [&](int gone, std::size_t added) {
                                                 return segment.keyAt(gone) == keyOf(rows[added]);
                                             });
    for (std::size_t i = 0; isSame && i < edit.gone.size(); ++i)
        segment.replace(edit.gone[i], rows[edit.added[i]]);
    return isSame;
}

/// Too many rows for one segment become several: even ones, so that each can grow; at
/// the end, where new rows come, full ones.
void IndexTable::addSegments(const IndexSegment &old, const std::vector<IndexRow> &rows,
                             const std::vector<IndexSegment::Source> &sources, bool isLast)
{
    const std::size_t parts = (sources.size() + m_segmentRows - 1) / m_segmentRows;
    std::size_t start = 0;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::size_t left = sources.size() - start;
        const std::size_t even = (left + parts - part - 1) / (parts - part);
        const std::size_t size = isLast ? std::min(left, m_segmentRows) : even;
        const auto first = sources.begin() + static_cast<std::ptrdiff_t>(start);
        m_segments.emplace_back(
            old, rows,
            std::vector<IndexSegment::Source>(first, first + static_cast<std::ptrdiff_t>(size)));
        start += size;
    }
}

void IndexTable::apply(std::vector<Change> changes)
{
    if (changes.empty())
        return;
    std::vector<IndexRow> rows;
    for (Change &change : changes) {
        if (change.row)
            rows.push_back(std::move(*change.row));
    }
    std::sort(rows.begin(), rows.end(),
              [](const IndexRow &a, const IndexRow &b) { return keyOf(a) < keyOf(b); });
    if (m_segments.empty()) {
        for (IndexRow &row : rows)
            append(std::move(row));
        flush();
        return;
    }
    std::vector<Edit> all = edits(changes, rows);
    std::vector<IndexSegment> before;
    before.swap(m_segments);
    m_segments.reserve(before.size() + 1);
    for (std::size_t place = 0; place < before.size(); ++place) {
        if (replaceInPlace(before[place], all[place], rows))
            m_segments.push_back(std::move(before[place]));
        else
            addSegments(before[place], rows, sources(before[place], all[place], rows),
                        place + 1 == before.size());
    }
}

int IndexTable::rows() const
{
    return std::accumulate(
        m_segments.begin(), m_segments.end(), 0,
        [](int total, const IndexSegment &segment) { return total + segment.size(); });
}

std::size_t IndexTable::bytes() const
{
    return std::accumulate(
        m_segments.begin(), m_segments.end(), sizeof(*this),
        [](std::size_t total, const IndexSegment &segment) { return total + segment.bytes(); });
}

} // namespace KODMS::Services
