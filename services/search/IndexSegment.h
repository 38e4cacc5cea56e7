// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexRow.h"
#include "services/search/PackedColumn.h"
#include "services/search/TextColumn.h"

#include <utility>
#include <vector>

namespace KODMS::Services {

/// Neighbouring rows of a table of the index, column by column. A row that comes, goes or
/// moves makes a new segment from the old one.
class IndexSegment {
public:
    /// Place in the order of the table.
    using Key = std::pair<PackedColumn::Number, PackedColumn::Number>;

    /// Where a row of a new segment comes from: not negative: the row of the old one;
    /// else ~place among the new rows.
    using Source = int;

    /// An empty one.
    IndexSegment(std::size_t numbers, std::size_t texts) : m_numbers(numbers), m_texts(texts) {}

    /// The rows that `sources` name, in that order.
    IndexSegment(const IndexSegment &old, const std::vector<IndexRow> &rows,
                 const std::vector<Source> &sources);

    /// Gives a row other values; its place in the order stays.
    void replace(int row, const IndexRow &fresh);

    int size() const { return m_ids.size(); }

    PackedColumn::Number idAt(int row) const { return m_ids.at(row); }

    Key keyAt(int row) const { return {m_times.at(row), m_ids.at(row)}; }

    /// -1 when no row has this id.
    int find(PackedColumn::Number id) const;

    const PackedColumn &ids() const { return m_ids; }

    const PackedColumn &numbers(std::size_t column) const { return m_numbers[column]; }

    const TextColumn &texts(std::size_t column) const { return m_texts[column]; }

    std::size_t bytes() const;

private:
    PackedColumn m_ids;
    PackedColumn m_times;
    std::vector<PackedColumn> m_numbers;
    std::vector<TextColumn> m_texts;
    std::pair<PackedColumn::Number, PackedColumn::Number> m_idSpan;
};

} // namespace KODMS::Services
