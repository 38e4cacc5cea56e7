// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace KODMS::Services {

/// A record holds something that the index cannot: a number column with a text, a time
/// that is none. The statements answer then.
class IndexUnfit : public std::runtime_error {
public:
    IndexUnfit(const char *table, std::int64_t row, const char *column, const char *what)
        : std::runtime_error(std::string(table) + " with id " + std::to_string(row) + ": " +
                             column + " holds " + what)
    {
    }
};

} // namespace KODMS::Services
