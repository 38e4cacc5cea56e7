// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/RowBits.h"

#include <algorithm>

namespace KODMS::Services {

RowBits RowBits::first(int rows)
{
    RowBits bits;
    const int whole = rows / wordSize;
    for (int place = 0; place < whole; ++place)
        bits.word(place) = ~Word{0};
    if (rows % wordSize != 0)
        bits.word(whole) = bitOf(rows) - 1;
    return bits;
}

void RowBits::keep(const RowBits &other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i)
        m_words[i] &= other.m_words[i];
}

void RowBits::add(const RowBits &other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i)
        m_words[i] |= other.m_words[i];
}

void RowBits::remove(const RowBits &other)
{
    for (std::size_t i = 0; i < m_words.size(); ++i)
        m_words[i] &= ~other.m_words[i];
}

bool RowBits::isEmpty() const
{
    return std::all_of(m_words.begin(), m_words.end(), [](Word word) { return word == 0; });
}

int RowBits::count() const
{
    int total = 0;
    for (const Word word : m_words)
        total += countOf(word);
    return total;
}

} // namespace KODMS::Services
