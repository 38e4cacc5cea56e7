// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextBlock.h"

#include "services/search/ByteScan.h"
#include "services/search/TextTest.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace KODMS::Services {

namespace {

/// A scan reads whole steps, also at the end of the block.
constexpr std::size_t step = RowBits::wordSize;

/// The bits below a bit.
RowBits::Word below(int bit)
{
    return (RowBits::Word{1} << bit) - 1;
}

/// Looks for the part of a test, a step at a time. Behind the texts there are only NULs, and
/// the part's last byte is always looked for: what is compared after that stands within.
class PartScan {
public:
    explicit PartScan(const TextTest &test)
        : m_test(test), m_first(test.probes()[0]), m_last(test.probes()[1]),
          m_third(test.probes()[2]), m_isSingle(test.length() == 1), m_hasThird(test.length() > 2),
          m_isProbed(test.isProbed())
    {
    }

    /// Bit i: the part stands at byte i, one of `among`.
    RowBits::Word hits(const char *text, RowBits::Word among) const
    {
        const auto *bytes = reinterpret_cast<const std::uint8_t *>(text);
        RowBits::Word found = among;
        found &=
            m_isSingle ? ByteScan::hits(bytes, m_first) : ByteScan::hits(bytes, m_first, m_last);
        if (found != 0 && m_hasThird)
            found &= ByteScan::hits(bytes, m_third);
        return found != 0 && !m_isProbed ? compared(text, found) : found;
    }

private:
    RowBits::Word compared(const char *text, RowBits::Word found) const;

    const TextTest &m_test;
    ByteScan::Probe m_first;
    ByteScan::Probe m_last;
    ByteScan::Probe m_third;
    bool m_isSingle;
    bool m_hasThird;
    bool m_isProbed;
};

RowBits::Word PartScan::compared(const char *text, RowBits::Word found) const
{
    for (RowBits::Word left = found; left != 0; left &= left - 1) {
        const int bit = RowBits::lowest(left);
        if (!m_test.isAt(text + bit))
            found &= ~(RowBits::Word{1} << bit);
    }
    return found;
}

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
    m_firsts.reserve(size / step + 1);
    std::size_t end = 0;
    for (const std::string_view text : texts) {
        std::copy(text.begin(), text.end(), m_text.begin() + static_cast<std::ptrdiff_t>(end));
        end += text.size() + 1;
        while (m_firsts.size() * step < end)
            m_firsts.push_back(static_cast<std::uint16_t>(m_ends.size()));
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

/// A hit is carried to the NUL behind its text: added to a word that has a bit for each byte
/// of the texts, it runs over them and stops where the NUL has left room.
RowBits TextBlock::containing(const TextTest &test) const
{
    RowBits found;
    const std::size_t used = m_ends.empty() ? 0 : m_ends.back();
    if (used < test.length())
        return found;
    const PartScan scan(test);
    RowBits::Word carry = 0;
    for (std::size_t base = 0; base < used; base += step) {
        const char *text = m_text.data() + base;
        const RowBits::Word here = scan.hits(text, ~RowBits::Word{0});
        if (here == 0 && carry == 0)
            continue;
        const RowBits::Word ends =
            ByteScan::equal(reinterpret_cast<const std::uint8_t *>(text), std::uint8_t{0});
        const RowBits::Word carried = ~ends + carry;
        const RowBits::Word sum = carried + here;
        carry =
            static_cast<RowBits::Word>(carried < carry) | static_cast<RowBits::Word>(sum < here);
        const int first = m_firsts[base / step];
        for (RowBits::Word left = sum & ends; left != 0; left &= left - 1)
            found.add(first + RowBits::countOf(ends & below(RowBits::lowest(left))));
    }
    return found;
}

bool TextBlock::contains(int place, const TextTest &test) const
{
    const std::size_t start = startOf(place);
    const std::size_t end = m_ends[static_cast<std::size_t>(place)];
    if (end - start <= test.length())
        return false;
    const PartScan scan(test);
    const std::size_t behindLast = end - test.length(); // the part's first byte stands before
    for (std::size_t base = start; base < behindLast; base += step) {
        const std::size_t left = behindLast - base;
        const RowBits::Word among = left < step ? below(static_cast<int>(left)) : ~RowBits::Word{0};
        if (scan.hits(m_text.data() + base, among) != 0)
            return true;
    }
    return false;
}

std::size_t TextBlock::bytes() const
{
    return m_text.capacity() + m_ends.capacity() * sizeof(m_ends[0]) +
           m_firsts.capacity() * sizeof(m_firsts[0]);
}

} // namespace KODMS::Services
