// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexSegment.h"

#include <optional>
#include <vector>

namespace KODMS::Services {

/// The searched fields of all rows of one view, in the order of the desks: creation
/// time, then id. In segments, so that a change is one of a few thousand rows.
class IndexTable {
public:
    struct Change {
        PackedColumn::Number id = 0;
        std::optional<IndexRow> row; ///< as it is now; none: gone
    };

    /// So many columns of numbers and of texts; `segmentRows` at most in a segment.
    IndexTable(std::size_t numbers, std::size_t texts, int segmentRows = RowBits::mostRows);

    /// Adds a row behind all others. Rows that are added are there after flush().
    void append(IndexRow row);
    void flush();

    /// Brings rows up to date; at most one change for each id.
    void apply(std::vector<Change> changes);

    const std::vector<IndexSegment> &segments() const { return m_segments; }

    int rows() const;
    std::size_t bytes() const;

private:
    /// What becomes of one segment.
    struct Edit {
        std::vector<int> gone;
        std::vector<std::size_t> added; ///< places among the new rows
    };

    std::size_t segmentFor(const IndexSegment::Key &key) const;
    std::vector<Edit> edits(const std::vector<Change> &changes,
                            const std::vector<IndexRow> &rows) const;
    static std::vector<IndexSegment::Source> sources(const IndexSegment &segment, const Edit &edit,
                                                     const std::vector<IndexRow> &rows);
    static bool replaceInPlace(IndexSegment &segment, Edit &edit,
                               const std::vector<IndexRow> &rows);
    void addSegments(const IndexSegment &old, const std::vector<IndexRow> &rows,
                     const std::vector<IndexSegment::Source> &sources, bool isLast);

    std::size_t m_numbers;
    std::size_t m_texts;
    std::size_t m_segmentRows;
    std::vector<IndexSegment> m_segments; ///< none is empty
    std::vector<IndexRow> m_waiting;
};

} // namespace KODMS::Services
