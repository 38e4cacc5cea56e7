// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace KODMS::Services {

/// Some rows of one segment of the index, a bit a row.
class RowBits {
public:
    using Word = std::uint64_t;

    static constexpr int wordSize = 64;
    static constexpr int mostRows = 4096; ///< of a segment
    static constexpr int wordCount = mostRows / wordSize;

    /// No row.
    RowBits() = default;

    /// The rows 0 to rows - 1.
    static RowBits first(int rows);

    void add(int row) { m_words[wordOf(row)] |= bitOf(row); }

    bool has(int row) const { return (m_words[wordOf(row)] & bitOf(row)) != 0; }

    /// Rows that both have.
    void keep(const RowBits &other);
    /// Rows that one of them has.
    void add(const RowBits &other);
    /// Rows that the other one has not.
    void remove(const RowBits &other);

    bool isEmpty() const;
    int count() const;

    Word &word(int place) { return m_words[static_cast<std::size_t>(place)]; }

    Word word(int place) const { return m_words[static_cast<std::size_t>(place)]; }

    /// Calls `action` with each row, upwards.
    template <typename Action> void forEach(Action action) const
    {
        for (int place = 0; place < wordCount; ++place) {
            for (Word left = word(place); left != 0; left &= left - 1)
                action(place * wordSize + lowest(left));
        }
    }

    /// How many bits of a word are set.
    static int countOf(Word word)
    {
#if defined(__POPCNT__)
        return __builtin_popcountll(word);
#else
        // In pairs of bits, in fours, in bytes; the product adds the bytes up.
        word -= (word >> 1U) & 0x5555555555555555U;
        word = (word & 0x3333333333333333U) + ((word >> 2U) & 0x3333333333333333U);
        word = (word + (word >> 4U)) & 0x0f0f0f0f0f0f0f0fU;
        return static_cast<int>((word * 0x0101010101010101U) >> 56U);
#endif
    }

    /// Place of the lowest bit of a word that has one.
    static int lowest(Word word)
    {
#if defined(__GNUC__)
        return __builtin_ctzll(word);
#else
        return countOf((word & (Word{0} - word)) - 1);
#endif
    }

private:
    static std::size_t wordOf(int row)
    {
        return static_cast<std::size_t>(row) / wordSize;
    }

    static Word bitOf(int row)
    {
        return Word{1} << (static_cast<unsigned>(row) % wordSize);
    }

    std::array<Word, wordCount> m_words{};
};

} // namespace KODMS::Services
