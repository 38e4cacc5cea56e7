// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/BytePair.h"

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

inline std::uint64_t equal(const std::uint8_t *values, std::uint8_t wanted)
{
    const __m128i each = everywhere(wanted);
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(_mm_cmpeq_epi8(load(values + i), each), i);
    return found;
}

inline std::uint64_t equal(const std::uint16_t *values, std::uint16_t wanted)
{
    const __m128i each = _mm_set1_epi16(static_cast<short>(wanted));
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(_mm_packs_epi16(_mm_cmpeq_epi16(load(values + i), each),
                                      _mm_cmpeq_epi16(load(values + i + 8), each)),
                      i);
    return found;
}

inline std::uint64_t equal(const std::uint32_t *values, std::uint32_t wanted)
{
    const __m128i each = _mm_set1_epi32(static_cast<int>(wanted));
    const auto eight = [&](unsigned i) {
        return _mm_packs_epi32(_mm_cmpeq_epi32(load(values + i), each),
                               _mm_cmpeq_epi32(load(values + i + 4), each));
    };
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16)
        found |= bits(_mm_packs_epi16(eight(i), eight(i + 8)), i);
    return found;
}

inline std::uint64_t pairs(const std::uint8_t *bytes, const BytePair &pair)
{
    const __m128i first = everywhere(pair.first);
    const __m128i firstCase = everywhere(pair.firstCase);
    const __m128i last = everywhere(pair.last);
    const __m128i lastCase = everywhere(pair.lastCase);
    std::uint64_t found = 0;
    for (unsigned i = 0; i < 64; i += 16) {
        const __m128i start = _mm_or_si128(load(bytes + i), firstCase);
        const __m128i end = _mm_or_si128(load(bytes + i + pair.distance), lastCase);
        found |= bits(_mm_and_si128(_mm_cmpeq_epi8(start, first), _mm_cmpeq_epi8(end, last)), i);
    }
    return found;
}

} // namespace KODMS::Services::Sse2Scan

#endif
