// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextBlock.h"

#include "services/search/ByteScan.h"
#include "services/search/TextTest.h"

#include <algorithm>
#include <array>
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

/// One text is short, and asked in shorter steps.
constexpr int shortStep = 16;

/// Looks for the part of a test, a step at a time, from a place on that has room for the part.
/// Behind the texts there are only NULs, and the part's last byte is always looked for: what is
/// compared after that stands within.
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

    /// Whether the part begins at one of so many places of a text.
    bool isAmong(const char *text, std::size_t places) const
    {
        for (; places > shortStep; places -= shortStep, text += shortStep) {
            if (shortHits(text, below(shortStep)) != 0)
                return true;
        }
        return shortHits(text, below(static_cast<int>(places))) != 0;
    }

private:
    /// The same in a short step.
    RowBits::Word shortHits(const char *text, RowBits::Word among) const
    {
        const auto *bytes = reinterpret_cast<const std::uint8_t *>(text);
        RowBits::Word found =
            among & ByteScan::hits16(bytes, m_first) & ByteScan::hits16(bytes, m_last);
        if (found != 0 && m_hasThird)
            found &= ByteScan::hits16(bytes, m_third);
        return found != 0 && !m_isProbed ? compared(text, found) : found;
    }

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

/// Memory that will be read soon begins to come.
void fetch(const char *place)
{
#if defined(__GNUC__)
    __builtin_prefetch(place);
#else
    static_cast<void>(place);
#endif
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
    const PartScan scan(test);
    RowBits::Word carry = 0;
    for (std::size_t base = 0; base < used; base += step) {
        const char *text = m_text.data() + base;
        const bool hasRoom = used - base > test.length();
        const RowBits::Word here = hasRoom ? scan.hits(text, ~RowBits::Word{0}) : 0;
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

/// The texts that are asked stand apart: each is fetched while others are looked at.
RowBits TextBlock::containing(const TextTest &test, const RowBits &among) const
{
    constexpr std::size_t ahead = 12;
    std::array<std::uint16_t, RowBits::mostRows + ahead> places{};
    std::size_t count = 0;
    among.forEach([&](int place) { places[count++] = static_cast<std::uint16_t>(place); });
    const PartScan scan(test);
    RowBits found;
    for (std::size_t i = 0; i < count; ++i) {
        fetch(m_text.data() + startOf(places[i + ahead]));
        const std::size_t start = startOf(places[i]);
        const std::size_t size = m_ends[places[i]] - start; // with its NUL
        if (size > test.length() && scan.isAmong(m_text.data() + start, size - test.length()))
            found.add(places[i]);
    }
    return found;
}

std::size_t TextBlock::bytes() const
{
    return m_text.capacity() + m_ends.capacity() * sizeof(m_ends[0]) +
           m_firsts.capacity() * sizeof(m_firsts[0]);
}

} // namespace KODMS::Services
