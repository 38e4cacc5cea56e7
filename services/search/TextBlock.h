// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/RowBits.h"

#include <string_view>
#include <vector>

namespace KODMS::Services {

class TextTest;

/// Texts of one segment back to back, with a NUL after each: a search for a part
/// scans them as one.
class TextBlock {
public:
    TextBlock() = default;
    /// At most RowBits::mostRows texts without NUL. Throws std::length_error when they
    /// are larger than a segment can be.
    explicit TextBlock(const std::vector<std::string_view> &texts);

    int size() const { return static_cast<int>(m_ends.size()); }

    std::string_view at(int place) const;

    /// The texts that contain the part of a Contains test.
    RowBits containing(const TextTest &test) const;

    /// The same, of these texts alone: for a part of them, faster than all.
    RowBits containing(const TextTest &test, const RowBits &among) const;

    std::size_t bytes() const;

private:
    std::size_t startOf(int place) const;

    std::vector<char> m_text;            ///< with room for a scan at its end
    std::vector<std::uint32_t> m_ends;   ///< behind the NUL of each text
    std::vector<std::uint16_t> m_firsts; ///< of each step of a scan: the text that it begins in
};

} // namespace KODMS::Services
