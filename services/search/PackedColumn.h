// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/RowBits.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace KODMS::Services {

/// Whole numbers, or none, of the rows of one segment: each in as few bytes as the
/// span of all needs.
class PackedColumn {
public:
    using Number = std::int64_t;

    /// Stands for "no number".
    static constexpr Number none = std::numeric_limits<Number>::min();

    PackedColumn() = default;
    explicit PackedColumn(const std::vector<Number> &numbers);

    int size() const { return m_size; }

    Number at(int row) const { return numberOf(codeAt(row)); }

    /// Gives a row another number, in its place. False, and nothing is changed, when the
    /// column has to be made anew for it.
    bool set(int row, Number number);

    // `none` when no row has a number. Rows that were changed may leave them too wide.
    Number smallest() const { return m_largestCode == 0 ? none : m_smallest; }

    Number largest() const { return numberOf(m_largestCode); }

    /// Of `rows`, keeps those with this number.
    void keepEqual(Number number, RowBits &rows) const;

    /// Of `rows`, keeps those whose number is a place in `members` that is not 0.
    void keepMembers(const std::vector<std::uint8_t> &members, RowBits &rows) const;

    std::size_t bytes() const { return m_bytes.capacity(); }

private:
    using Code = std::uint64_t;

    Code codeAt(int row) const;
    Number numberOf(Code code) const;
    Code codeOf(Number number) const;

    template <typename Value> void put(int row, Value code);
    template <typename Value> void store(const std::vector<Number> &numbers);
    template <typename Value> Value valueAt(int row) const;
    template <typename Value> void keepValue(Code code, RowBits &rows) const;
    template <typename Value>
    void keepTable(const std::vector<std::uint8_t> &members, RowBits &rows) const;

    // Code 0 is "no number", code 1 the smallest one.
    std::vector<std::uint8_t> m_bytes; ///< whole words of rows
    Number m_smallest = 0;
    Code m_largestCode = 0;
    int m_width = 0; ///< bytes a row; 0: all rows have the largest code
    int m_size = 0;
};

} // namespace KODMS::Services
