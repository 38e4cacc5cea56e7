// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/BytePair.h"

namespace KODMS::Services::PortableScan {

/// Bit i: value i of the 64 values is `wanted`.
template <typename Value> std::uint64_t equal(const Value *values, Value wanted)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; ++i)
        found |= static_cast<std::uint64_t>(values[i] == wanted) << i;
    return found;
}

/// Bit i: the pair stands at byte i; reads 64 bytes, and 64 from the distance on.
inline std::uint64_t pairs(const std::uint8_t *bytes, const BytePair &pair)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; ++i) {
        const bool isHere = (bytes[i] | pair.firstCase) == pair.first &&
                            (bytes[i + pair.distance] | pair.lastCase) == pair.last;
        found |= static_cast<std::uint64_t>(isHere) << i;
    }
    return found;
}

} // namespace KODMS::Services::PortableScan
