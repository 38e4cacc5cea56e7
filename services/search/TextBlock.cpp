// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextBlock.h"

#include "services/search/ByteScan.h"
#include "services/search/TextTest.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace KODMS::Services {

namespace {

/// A scan reads whole steps, also at the end of the block.
constexpr std::size_t step = 64;

} // namespace

TextBlock::TextBlock(const std::vector<std::string_view> &texts)
{
    std::size_t size = 0;
    for (const std::string_view text : texts)
        size += text.size() + 1;
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("the texts of a segment of the index are too large");
    m_text.resize(size + step);
    m_ends.reserve(texts.size());
    std::size_t end = 0;
    for (const std::string_view text : texts) {
        std::copy(text.begin(), text.end(), m_text.begin() + static_cast<std::ptrdiff_t>(end));
        end += text.size() + 1;
        m_ends.push_back(static_cast<std::uint32_t>(end));
    }
}

std::size_t TextBlock::startOf(int place) const
{
    return place == 0 ? 0 : m_ends[static_cast<std::size_t>(place) - 1];
}

std::string_view TextBlock::at(int place) const
{
    const std::size_t start = startOf(place);
    return {m_text.data() + start, m_ends[static_cast<std::size_t>(place)] - start - 1};
}

/// The text in which an offset lies; not before `from`. Texts of a column are of about one
/// length, so that the first guess is nearly right.
int TextBlock::placeAt(std::size_t offset, int from, std::size_t bytesToText) const
{
    constexpr int near = 6;
    const std::size_t ahead = (offset - startOf(from)) / bytesToText;
    int place = std::min(from + static_cast<int>(ahead), size() - 1);
    for (int steps = 0; steps < near; ++steps) {
        if (m_ends[static_cast<std::size_t>(place)] <= offset)
            ++place;
        else if (startOf(place) > offset)
            --place;
        else
            return place;
    }
    const auto found =
        std::upper_bound(m_ends.begin() + from, m_ends.end(), static_cast<std::uint32_t>(offset));
    return static_cast<int>(found - m_ends.begin());
}

RowBits TextBlock::containing(const TextTest &test) const
{
    RowBits found;
    const std::size_t used = m_ends.empty() ? 0 : m_ends.back();
    if (used < test.length())
        return found;
    const BytePair pair = test.pair();
    const std::size_t last = used - test.length();
    const std::size_t bytesToText = used / m_ends.size();
    const bool isPairEnough = test.length() <= 2;
    int place = 0;
    std::size_t next = 0; // the text of the last hit needs no second one
    for (std::size_t base = 0; base <= last; base += step) {
        std::uint8_t const *bytes = reinterpret_cast<const std::uint8_t *>(m_text.data() + base);
        for (std::uint64_t hits = ByteScan::pairs(bytes, pair); hits != 0; hits &= hits - 1) {
            const std::size_t offset = base + static_cast<std::size_t>(RowBits::lowest(hits));
            if (offset < next || offset > last)
                continue;
            if (!isPairEnough && !test.isAt(m_text.data() + offset))
                continue;
            place = placeAt(offset, place, bytesToText);
            found.add(place);
            next = m_ends[static_cast<std::size_t>(place)];
        }
    }
    return found;
}

std::size_t TextBlock::bytes() const
{
    return m_text.capacity() + m_ends.capacity() * sizeof(m_ends[0]);
}

} // namespace KODMS::Services
