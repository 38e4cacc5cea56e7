// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/RecordFields.h"

#include <charconv>
#include <cmath>

namespace KODMS::Services {

namespace {

/// Inches or millimetres: larger than any factory.
constexpr double LargestCoordinate = 1e9;

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::string_view withoutPlus(std::string_view field)
{
    return field.size() > 1 && field.front() == '+' && field[1] != '-' ? field.substr(1) : field;
}

} // namespace

std::string_view RecordFields::next()
{
    std::size_t begin = 0;
    while (begin < m_rest.size() && isBlank(m_rest[begin]))
        ++begin;
    std::size_t end = begin;
    while (end < m_rest.size() && !isBlank(m_rest[end]) && m_rest[end] != ';')
        ++end;
    const std::string_view field = m_rest.substr(begin, end - begin);
    m_rest.remove_prefix(end);
    return field;
}

FieldFault checkCoordinate(std::string_view field)
{
    const std::string_view digits = withoutPlus(field);
    double value = 0;
    const auto *last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value);
    if (error == std::errc::result_out_of_range)
        return FieldFault::OutOfRange;
    if (error != std::errc() || end != last || std::isnan(value))
        return FieldFault::NotANumber;
    return std::fabs(value) > LargestCoordinate ? FieldFault::OutOfRange : FieldFault::None;
}

FieldFault checkInteger(std::string_view field, int &value)
{
    const std::string_view digits = withoutPlus(field);
    const auto *last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, value);
    if (error == std::errc::result_out_of_range)
        return FieldFault::OutOfRange;
    return error == std::errc() && end == last ? FieldFault::None : FieldFault::NotANumber;
}

} // namespace KODMS::Services
