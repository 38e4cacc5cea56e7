// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace KODMS::Services {

/// True when this processor has the SHA-256 instructions.
bool sha256BlocksSupported();

/// Runs the compression function over whole blocks of 64 bytes. `state` holds
/// eight words. Only to be called where sha256BlocksSupported().
void sha256Blocks(std::uint32_t *state, const unsigned char *data, std::size_t blocks);

} // namespace KODMS::Services
