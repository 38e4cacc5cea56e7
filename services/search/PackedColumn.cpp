// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/PackedColumn.h"

#include "services/search/ByteScan.h"

#include <algorithm>
#include <cstring>

namespace KODMS::Services {

namespace {

constexpr std::uint64_t largest8 = std::numeric_limits<std::uint8_t>::max();
constexpr std::uint64_t largest16 = std::numeric_limits<std::uint16_t>::max();
constexpr std::uint64_t largest32 = std::numeric_limits<std::uint32_t>::max();

/// So few rows of a word are asked one by one.
constexpr int fewRows = 12;

template <typename Value> std::uint64_t equalValues(const std::uint8_t *values, Value wanted)
{
    return ByteScan::equal(values, wanted);
}

template <> std::uint64_t equalValues(const std::uint8_t *values, std::uint64_t wanted)
{
    return PortableScan::equal(values, wanted);
}

} // namespace

PackedColumn::PackedColumn(const std::vector<Number> &numbers)
    : m_size(static_cast<int>(numbers.size()))
{
    Number largest = none;
    bool hasNone = false;
    m_smallest = std::numeric_limits<Number>::max();
    for (const Number number : numbers) {
        hasNone = hasNone || number == none;
        if (number == none)
            continue;
        m_smallest = std::min(m_smallest, number);
        largest = std::max(largest, number);
    }
    m_largestCode = largest == none ? 0 : codeOf(largest);
    if (m_largestCode == 0 || (m_largestCode == 1 && !hasNone))
        return;
    if (m_largestCode <= largest8)
        store<std::uint8_t>(numbers);
    else if (m_largestCode <= largest16)
        store<std::uint16_t>(numbers);
    else if (m_largestCode <= largest32)
        store<std::uint32_t>(numbers);
    else
        store<std::uint64_t>(numbers);
}

template <typename Value> void PackedColumn::store(const std::vector<Number> &numbers)
{
    constexpr std::size_t block = RowBits::wordSize;
    m_width = sizeof(Value);
    m_bytes.resize((numbers.size() + block - 1) / block * block * sizeof(Value));
    for (std::size_t i = 0; i < numbers.size(); ++i)
        put(static_cast<int>(i), static_cast<Value>(codeOf(numbers[i])));
}

template <typename Value> void PackedColumn::put(int row, Value code)
{
    std::memcpy(m_bytes.data() + static_cast<std::size_t>(row) * sizeof(Value), &code,
                sizeof(Value));
}

bool PackedColumn::set(int row, Number number)
{
    if (number == at(row))
        return true;
    const bool isNearby = number == none || number >= m_smallest;
    const Code code = isNearby ? codeOf(number) : 0;
    if (m_width == 0 || !isNearby || code > m_largestCode)
        return false;
    switch (m_width) {
    case sizeof(std::uint8_t):
        put(row, static_cast<std::uint8_t>(code));
        break;
    case sizeof(std::uint16_t):
        put(row, static_cast<std::uint16_t>(code));
        break;
    case sizeof(std::uint32_t):
        put(row, static_cast<std::uint32_t>(code));
        break;
    default:
        put(row, code);
    }
    return true;
}

PackedColumn::Code PackedColumn::codeOf(Number number) const
{
    return number == none ? 0 : static_cast<Code>(number) - static_cast<Code>(m_smallest) + 1;
}

PackedColumn::Number PackedColumn::numberOf(Code code) const
{
    return code == 0 ? none : static_cast<Number>(static_cast<Code>(m_smallest) + code - 1);
}

template <typename Value> Value PackedColumn::valueAt(int row) const
{
    Value value;
    std::memcpy(&value, m_bytes.data() + static_cast<std::size_t>(row) * sizeof(Value),
                sizeof(Value));
    return value;
}

PackedColumn::Code PackedColumn::codeAt(int row) const
{
    switch (m_width) {
    case sizeof(std::uint8_t):
        return valueAt<std::uint8_t>(row);
    case sizeof(std::uint16_t):
        return valueAt<std::uint16_t>(row);
    case sizeof(std::uint32_t):
        return valueAt<std::uint32_t>(row);
    case sizeof(std::uint64_t):
        return valueAt<std::uint64_t>(row);
    default:
        return m_largestCode;
    }
}

template <typename Value> void PackedColumn::keepValue(Code code, RowBits &rows) const
{
    const auto wanted = static_cast<Value>(code);
    for (int place = 0; place * RowBits::wordSize < m_size; ++place) {
        RowBits::Word &word = rows.word(place);
        if (word == 0)
            continue;
        constexpr std::size_t wordBytes = RowBits::wordSize * sizeof(Value);
        word &= equalValues(m_bytes.data() + static_cast<std::size_t>(place) * wordBytes, wanted);
    }
}

void PackedColumn::keepEqual(Number number, RowBits &rows) const
{
    const bool isAmong = number != none && m_largestCode > 0 && number >= m_smallest &&
                         codeOf(number) <= m_largestCode;
    if (!isAmong) {
        rows = {};
        return;
    }
    const Code code = codeOf(number);
    switch (m_width) {
    case sizeof(std::uint8_t):
        return keepValue<std::uint8_t>(code, rows);
    case sizeof(std::uint16_t):
        return keepValue<std::uint16_t>(code, rows);
    case sizeof(std::uint32_t):
        return keepValue<std::uint32_t>(code, rows);
    case sizeof(std::uint64_t):
        return keepValue<std::uint64_t>(code, rows);
    default:
        break; // every row has it
    }
}

template <typename Value>
void PackedColumn::keepTable(const std::vector<std::uint8_t> &table, RowBits &rows) const
{
    for (int place = 0; place * RowBits::wordSize < m_size; ++place) {
        RowBits::Word &word = rows.word(place);
        if (word == 0)
            continue;
        RowBits::Word found = 0;
        const int start = place * RowBits::wordSize;
        const bool areFew = RowBits::countOf(word) < fewRows;
        for (RowBits::Word left = areFew ? word : 0; left != 0; left &= left - 1) {
            const int bit = RowBits::lowest(left);
            found |= static_cast<RowBits::Word>(table[valueAt<Value>(start + bit)]) << bit;
        }
        for (unsigned i = 0; !areFew && i < RowBits::wordSize; ++i)
            found |= static_cast<RowBits::Word>(table[valueAt<Value>(start + static_cast<int>(i))])
                     << i;
        word &= found;
    }
}

void PackedColumn::keepMembers(const std::vector<std::uint8_t> &members, RowBits &rows) const
{
    const auto isMember = [&members](Number number) {
        return number >= 0 && static_cast<std::size_t>(number) < members.size() &&
               members[static_cast<std::size_t>(number)] != 0;
    };
    if (m_width == 0) {
        if (!isMember(numberOf(m_largestCode)))
            rows = {};
        return;
    }
    const bool isSmall = m_width <= static_cast<int>(sizeof(std::uint16_t));
    if (!isSmall) {
        RowBits kept;
        rows.forEach([&](int row) {
            if (isMember(at(row)))
                kept.add(row);
        });
        rows = kept;
        return;
    }
    std::vector<std::uint8_t> table(static_cast<std::size_t>(m_largestCode) + 1);
    for (std::size_t code = 1; code < table.size(); ++code)
        table[code] = isMember(numberOf(code)) ? 1 : 0;
    if (m_width == sizeof(std::uint8_t))
        keepTable<std::uint8_t>(table, rows);
    else
        keepTable<std::uint16_t>(table, rows);
}

} // namespace KODMS::Services
