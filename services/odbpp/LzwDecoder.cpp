// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/LzwDecoder.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr unsigned Literals = 256;
constexpr unsigned ClearCode = 256;
constexpr unsigned SmallestWidth = 9;
constexpr unsigned GroupSize = 8;
constexpr std::size_t OutputSize = std::size_t{1} << 17;
constexpr int HeaderSize = 3;

} // namespace

LzwDecoder::LzwDecoder() : m_prefix(TableSize), m_suffix(TableSize), m_stack(TableSize + 1)
{
    m_output.reserve(OutputSize + TableSize + 1);
}

bool LzwDecoder::header(unsigned char byte)
{
    constexpr std::array<unsigned char, 2> magic{0x1f, 0x9d};
    constexpr unsigned widthMask = 0x1f;
    constexpr unsigned clearMask = 0x80;
    const int place = m_headerBytes++;
    if (place < 2)
        return byte == magic.at(static_cast<std::size_t>(place)) || damaged("no .Z header");
    m_maxWidth = byte & widthMask;
    m_hasClear = (byte & clearMask) != 0;
    if ((byte & ~(widthMask | clearMask)) != 0 || m_maxWidth < SmallestWidth ||
        m_maxWidth > LargestWidth)
        return damaged("no known kind of .Z file");
    restart();
    return true;
}

void LzwDecoder::restart()
{
    m_width = SmallestWidth;
    m_free = m_hasClear ? ClearCode + 1 : Literals;
    m_previous = TableSize;
}

/// What is left of the present group of eight codes was written for nothing.
void LzwDecoder::startGroup()
{
    m_skip = (GroupSize - m_inGroup) % GroupSize * m_width;
    m_inGroup = 0;
}

void LzwDecoder::widen()
{
    if (m_width < m_maxWidth && m_free >= (1U << m_width)) {
        startGroup();
        ++m_width;
    }
}

/// Writes the string of a known code.
bool LzwDecoder::unwind(unsigned value)
{
    std::size_t depth = 0;
    while (value >= Literals) {
        if (depth >= m_stack.size() || value >= m_free)
            return damaged("a .Z code that leads nowhere");
        m_stack[depth++] = m_suffix[value];
        value = m_prefix[value];
    }
    m_first = static_cast<unsigned char>(value);
    m_output.push_back(static_cast<char>(value));
    while (depth > 0)
        m_output.push_back(static_cast<char>(m_stack[--depth]));
    return true;
}

/// The string before the present one, and the byte that the present one begins with.
void LzwDecoder::learn()
{
    if (m_free >= (1U << m_maxWidth))
        return;
    m_prefix[m_free] = static_cast<std::uint16_t>(m_previous);
    m_suffix[m_free] = m_first;
    ++m_free;
}

bool LzwDecoder::code(unsigned value)
{
    m_inGroup = (m_inGroup + 1) % GroupSize;
    if (m_hasClear && value == ClearCode) {
        startGroup();
        restart();
        return true;
    }
    const bool isFirst = m_previous == TableSize;
    if (isFirst && value >= Literals)
        return damaged("a .Z code before its time");
    if (value > m_free || (value == m_free && m_free >= (1U << m_maxWidth)))
        return damaged("a .Z code that is not known yet");
    if (!isFirst && value == m_free) {
        learn(); // the string is its predecessor and that one's first byte
        if (!unwind(value))
            return false;
    } else {
        if (!unwind(value))
            return false;
        if (!isFirst)
            learn();
    }
    m_previous = value;
    widen();
    return true;
}

bool LzwDecoder::flush(const Taker &take)
{
    if (m_output.empty())
        return true;
    const bool taken = take(m_output.data(), m_output.size());
    m_output.clear();
    return taken;
}

bool LzwDecoder::add(const char *bytes, std::size_t size, const Taker &take)
{
    constexpr unsigned byteBits = 8;
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (m_headerBytes < HeaderSize) {
            if (!header(byte))
                return false;
            continue;
        }
        m_bits |= std::uint64_t{byte} << m_bitCount;
        m_bitCount += byteBits;
        const unsigned skipped = std::min(m_skip, m_bitCount);
        m_bits >>= skipped;
        m_bitCount -= skipped;
        m_skip -= skipped;
        if (m_skip > 0 || m_bitCount < m_width)
            continue;
        const auto value = static_cast<unsigned>(m_bits & ((1U << m_width) - 1));
        m_bits >>= m_width;
        m_bitCount -= m_width;
        const bool known = code(value);
        // What came before the damage is told first, wherever the pieces were cut.
        if ((!known || m_output.size() >= OutputSize) && (!flush(take) || !known))
            return false;
    }
    return flush(take);
}

bool LzwDecoder::finish(const Taker &take)
{
    if (m_headerBytes < HeaderSize)
        return damaged("the .Z file is cut short");
    return flush(take);
}

} // namespace KODMS::Services
