// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexTime.h"

#include <cstddef>

namespace KODMS::Services {

namespace {

constexpr std::string_view form = "0000-00-00T00:00:00.000Z";

bool hasForm(std::string_view text)
{
    if (text.size() != form.size())
        return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '0' ? !isDigit : text[i] != form[i])
            return false;
    }
    return true;
}

struct Part {
    std::size_t start;
    std::size_t length;
    std::int64_t most; ///< largest value; texts with larger ones are no times
};

constexpr Part parts[] = {{0, 4, 9999}, {5, 2, 12},  {8, 2, 31},  {11, 2, 23},
                          {14, 2, 59},  {17, 2, 60}, {20, 3, 999}};

} // namespace

std::optional<std::int64_t> IndexTime::numberOf(std::string_view text)
{
    if (!hasForm(text))
        return std::nullopt;
    std::int64_t number = 0;
    for (const Part &part : parts) {
        std::int64_t value = 0;
        for (const char digit : text.substr(part.start, part.length))
            value = value * 10 + (digit - '0');
        if (value > part.most)
            return std::nullopt;
        number = number * (part.most + 1) + value;
    }
    return number;
}

} // namespace KODMS::Services
