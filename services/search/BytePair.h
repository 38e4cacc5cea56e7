// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace KODMS::Services {

/// Two bytes at a distance: what a scan looks for before it compares a whole text.
/// A case bit of 0x20 admits both cases of a Latin letter, whose byte is the small one.
struct BytePair {
    std::uint8_t first = 0;
    std::uint8_t firstCase = 0;
    std::uint8_t last = 0;
    std::uint8_t lastCase = 0;
    std::size_t distance = 0;
};

} // namespace KODMS::Services
