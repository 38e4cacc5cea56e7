// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextTest.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr std::size_t mostDigits = 18;

char folded(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::uint8_t caseBit(char c)
{
    return c >= 'a' && c <= 'z' ? 0x20 : 0;
}

bool isNumber(std::string_view text, std::int64_t number)
{
    if (text.empty() || text.size() > mostDigits)
        return false;
    std::int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + (c - '0');
    }
    return value == number;
}

} // namespace

TextTest TextTest::contains(std::string_view part)
{
    TextTest test;
    test.m_kind = Kind::Contains;
    test.m_text = part;
    std::transform(test.m_text.begin(), test.m_text.end(), test.m_text.begin(), folded);
    test.chooseProbes();
    return test;
}

/// Texts that are not Latin share their first bytes; those at the end of a sign differ more.
void TextTest::chooseProbes()
{
    constexpr unsigned char latin = 0x80;
    const std::size_t size = m_text.size();
    std::size_t places[] = {0, size - 1, 0};
    if (size > 2) {
        const bool isLatin = static_cast<unsigned char>(m_text.front()) < latin;
        places[0] = isLatin ? 0 : std::min<std::size_t>(2, size - 2);
        places[2] = size - 2 == places[0] ? places[0] - 1 : size - 2;
    }
    for (std::size_t i = 0; i < m_probes.size(); ++i) {
        const char c = m_text[places[i]];
        m_probes[i] = {static_cast<std::uint8_t>(c), caseBit(c), places[i]};
    }
}

TextTest TextTest::equal(std::string_view text)
{
    TextTest test;
    test.m_kind = Kind::Equal;
    test.m_text = text;
    return test;
}

TextTest TextTest::number(std::int64_t number)
{
    TextTest test;
    test.m_kind = Kind::Number;
    test.m_number = number;
    return test;
}

bool TextTest::isAt(const char *place) const
{
    return std::equal(m_text.begin(), m_text.end(), place,
                      [](char wanted, char c) { return wanted == folded(c); });
}

bool TextTest::isIn(std::string_view text) const
{
    if (text.size() < m_text.size())
        return false;
    const std::size_t places = text.size() - m_text.size() + 1;
    for (std::size_t place = 0; place < places; ++place) {
        if (isAt(text.data() + place))
            return true;
    }
    return false;
}

bool TextTest::matches(std::string_view text) const
{
    switch (m_kind) {
    case Kind::Contains:
        return isIn(text);
    case Kind::Number:
        return isNumber(text, m_number);
    case Kind::Equal:
        break;
    }
    return text == m_text;
}

} // namespace KODMS::Services
