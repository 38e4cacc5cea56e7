// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace KODMS::Services {

/// The fields of a line record: separated by blanks, up to the attributes, which
/// begin with a semicolon.
class RecordFields {
public:
    explicit RecordFields(std::string_view record) : m_rest(record) {}

    /// Empty at the end.
    std::string_view next();

private:
    std::string_view m_rest;
};

enum class FieldFault { None, NotANumber, OutOfRange };

/// A coordinate or a size, in the unit of the file.
FieldFault checkCoordinate(std::string_view field);
/// A whole number of 32 bits.
FieldFault checkInteger(std::string_view field, int &value);

} // namespace KODMS::Services
