// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/ByteProbe.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace KODMS::Services {

/// What a condition asks of a text, UTF-8. As the statements do, it folds Latin
/// letters and nothing else, and reads a number only from 1 to 18 digits.
class TextTest {
public:
    enum class Kind { Contains, Equal, Number };

    /// `part` is not empty.
    static TextTest contains(std::string_view part);
    static TextTest equal(std::string_view text);
    static TextTest number(std::int64_t number);

    Kind kind() const { return m_kind; }

    bool matches(std::string_view text) const;

    /// Whether both ask the same.
    bool operator==(const TextTest &other) const
    {
        return m_kind == other.m_kind && m_text == other.m_text && m_number == other.m_number;
    }

    // For Contains: what a scan looks for (the part's last byte is the second), whether that
    // is all of the part, and whether the part stands at a place that has room for it.
    using Probes = std::array<ByteProbe, 3>;

    const Probes &probes() const { return m_probes; }

    bool isProbed() const { return m_text.size() <= m_probes.size(); }

    std::size_t length() const { return m_text.size(); }

    bool isAt(const char *place) const;

private:
    TextTest() = default;
    void chooseProbes();
    bool isIn(std::string_view text) const;

    Kind m_kind = Kind::Equal;
    std::string m_text; ///< folded for Contains
    std::int64_t m_number = 0;
    Probes m_probes;
};

} // namespace KODMS::Services
