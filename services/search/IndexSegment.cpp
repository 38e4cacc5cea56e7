// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexSegment.h"

#include <algorithm>
#include <numeric>

namespace KODMS::Services {

namespace {

/// Asks `old` or `fresh` for the value of each row.
template <typename Value, typename Old, typename Fresh>
std::vector<Value> gather(const std::vector<IndexSegment::Source> &sources, Old old, Fresh fresh)
{
    std::vector<Value> values;
    values.reserve(sources.size());
    for (const IndexSegment::Source source : sources)
        values.push_back(source >= 0 ? old(source) : fresh(static_cast<std::size_t>(~source)));
    return values;
}

} // namespace

IndexSegment::IndexSegment(const IndexSegment &old, const std::vector<IndexRow> &rows,
                           const std::vector<Source> &sources)
{
    using Number = PackedColumn::Number;
    const auto numbers = [&sources](const PackedColumn &column, auto fresh) {
        return gather<Number>(
            sources, [&column](int row) { return column.at(row); }, fresh);
    };
    const std::vector<Number> ids =
        numbers(old.m_ids, [&rows](std::size_t place) { return rows[place].id; });
    m_ids = PackedColumn(ids);
    m_times =
        PackedColumn(numbers(old.m_times, [&rows](std::size_t place) { return rows[place].time; }));
    for (std::size_t column = 0; column < old.m_numbers.size(); ++column)
        m_numbers.emplace_back(numbers(
            old.m_numbers[column], [&](std::size_t place) { return rows[place].numbers[column]; }));
    for (std::size_t column = 0; column < old.m_texts.size(); ++column)
        m_texts.emplace_back(gather<std::string_view>(
            sources, [&](int row) { return old.m_texts[column].at(row); },
            [&](std::size_t place) { return std::string_view(rows[place].texts[column]); }));
    if (ids.empty())
        return;
    const auto span = std::minmax_element(ids.begin(), ids.end());
    m_idSpan = {*span.first, *span.second};
}

void IndexSegment::replace(int row, const IndexRow &fresh)
{
    std::vector<Source> sources(static_cast<std::size_t>(size()));
    std::iota(sources.begin(), sources.end(), 0);
    sources[static_cast<std::size_t>(row)] = ~0;
    for (std::size_t column = 0; column < m_numbers.size(); ++column) {
        PackedColumn &numbers = m_numbers[column];
        const PackedColumn::Number number = fresh.numbers[column];
        if (!numbers.set(row, number))
            numbers = PackedColumn(gather<PackedColumn::Number>(
                sources, [&numbers](int place) { return numbers.at(place); },
                [number](std::size_t) { return number; }));
    }
    for (std::size_t column = 0; column < m_texts.size(); ++column) {
        TextColumn &texts = m_texts[column];
        const std::string_view text = fresh.texts[column];
        if (texts.at(row) != text)
            texts = TextColumn(gather<std::string_view>(
                sources, [&texts](int place) { return texts.at(place); },
                [text](std::size_t) { return text; }));
    }
}

int IndexSegment::find(PackedColumn::Number id) const
{
    if (size() == 0 || id < m_idSpan.first || id > m_idSpan.second)
        return -1;
    RowBits rows = RowBits::first(size());
    m_ids.keepEqual(id, rows);
    int found = -1;
    rows.forEach([&found](int row) { found = row; });
    return found;
}

std::size_t IndexSegment::bytes() const
{
    std::size_t total = sizeof(*this) + m_ids.bytes() + m_times.bytes() +
                        m_numbers.capacity() * sizeof(PackedColumn) +
                        m_texts.capacity() * sizeof(TextColumn);
    for (const PackedColumn &column : m_numbers)
        total += column.bytes();
    for (const TextColumn &column : m_texts)
        total += column.bytes();
    return total;
}

} // namespace KODMS::Services
