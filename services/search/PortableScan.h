// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/ByteProbe.h"

#include <cstring>

namespace KODMS::Services::PortableScan {

/// Bit i: value i of the 64 values that stand there is `wanted`.
template <typename Value> std::uint64_t equal(const std::uint8_t *values, Value wanted)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; ++i) {
        Value value;
        std::memcpy(&value, values + i * sizeof(Value), sizeof(Value));
        found |= static_cast<std::uint64_t>(value == wanted) << i;
    }
    return found;
}

/// A probe as this scan likes it.
using Probe = ByteProbe;

/// Bit i: a text that starts at byte i has the byte; reads 64 bytes from the offset on.
inline std::uint64_t hits(const std::uint8_t *bytes, const Probe &probe)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; ++i) {
        const bool isHere = (bytes[i + probe.offset] | probe.caseBit) == probe.byte;
        found |= static_cast<std::uint64_t>(isHere) << i;
    }
    return found;
}

/// The same for sixteen places.
inline std::uint64_t hits16(const std::uint8_t *bytes, const Probe &probe)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 16; ++i) {
        const bool isHere = (bytes[i + probe.offset] | probe.caseBit) == probe.byte;
        found |= static_cast<std::uint64_t>(isHere) << i;
    }
    return found;
}

/// The same with two bytes.
inline std::uint64_t hits(const std::uint8_t *bytes, const Probe &first, const Probe &second)
{
    return hits(bytes, first) & hits(bytes, second);
}

} // namespace KODMS::Services::PortableScan
