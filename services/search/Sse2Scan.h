// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/ByteProbe.h"

#if defined(__SSE2__)

#include <emmintrin.h>

/// The twin of PortableScan for processors that compare 16 bytes at once.
namespace KODMS::Services::Sse2Scan {

inline __m128i load(const void *from)
{
    return _mm_loadu_si128(static_cast<const __m128i *>(from));
}

inline __m128i everywhere(std::uint8_t byte)
{
    return _mm_set1_epi8(static_cast<char>(byte));
}

/// Sixteen bytes that are 0 or 255, as sixteen bits at their place of the word.
inline std::uint64_t bits(__m128i bytes, unsigned place)
{
    return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(bytes))) << place;
}

inline __m128i equalBytes(const std::uint8_t *values, __m128i each)
{
    return _mm_cmpeq_epi8(load(values), each);
}

inline __m128i equalPairs(const std::uint8_t *values, __m128i each)
{
    return _mm_packs_epi16(_mm_cmpeq_epi16(load(values), each),
                           _mm_cmpeq_epi16(load(values + 16), each));
}

inline __m128i equalQuads(const std::uint8_t *values, __m128i each)
{
    return _mm_packs_epi32(_mm_cmpeq_epi32(load(values), each),
                           _mm_cmpeq_epi32(load(values + 16), each));
}

inline std::uint64_t equal(const std::uint8_t *values, std::uint8_t wanted)
{
    const __m128i each = everywhere(wanted);
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(equalBytes(values + i, each), i);
    return found;
}

inline std::uint64_t equal(const std::uint8_t *values, std::uint16_t wanted)
{
    const __m128i each = _mm_set1_epi16(static_cast<short>(wanted));
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(equalPairs(values + std::size_t{2} * i, each), i);
    return found;
}

inline std::uint64_t equal(const std::uint8_t *values, std::uint32_t wanted)
{
    const __m128i each = _mm_set1_epi32(static_cast<int>(wanted));
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16) {
        const std::uint8_t *from = values + std::size_t{4} * i;
        found |= bits(_mm_packs_epi16(equalQuads(from, each), equalQuads(from + 32, each)), i);
    }
    return found;
}

/// A probe that is spread over a register once.
struct Probe {
    Probe(const ByteProbe &probe) // NOLINT(google-explicit-constructor): the same thing
        : byte(everywhere(probe.byte)), caseBit(everywhere(probe.caseBit)), offset(probe.offset)
    {
    }

    __m128i byte;
    __m128i caseBit;
    std::size_t offset;
};

/// Sixteen bytes that are 255 where a text that starts there has the byte.
inline __m128i probed(const std::uint8_t *bytes, const Probe &probe)
{
    return _mm_cmpeq_epi8(_mm_or_si128(load(bytes + probe.offset), probe.caseBit), probe.byte);
}

inline std::uint64_t hits16(const std::uint8_t *bytes, const Probe &probe)
{
    return bits(probed(bytes, probe), 0);
}

inline std::uint64_t hits(const std::uint8_t *bytes, const Probe &probe)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(probed(bytes + i, probe), i);
    return found;
}

inline std::uint64_t hits(const std::uint8_t *bytes, const Probe &first, const Probe &second)
{
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(_mm_and_si128(probed(bytes + i, first), probed(bytes + i, second)), i);
    return found;
}

} // namespace KODMS::Services::Sse2Scan

#endif
