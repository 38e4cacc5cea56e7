// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace KODMS::Services {

/// One byte of a text that is looked for, and how far from the text's start it stands.
/// A case bit of 0x20 admits both cases of a Latin letter, whose byte is the small one.
struct ByteProbe {
    std::uint8_t byte = 0;
    std::uint8_t caseBit = 0;
    std::size_t offset = 0;
};

} // namespace KODMS::Services
