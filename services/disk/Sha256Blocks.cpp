// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Sha256Blocks.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define KODMS_SHA_INSTRUCTIONS 1
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace KODMS::Services {

#ifdef KODMS_SHA_INSTRUCTIONS

namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
alignas(16) constexpr std::uint32_t RoundConstants[64] = {
    0x428a2f98U, 0x71374491U, 0xb5c0fbcfU, 0xe9b5dba5U, 0x3956c25bU, 0x59f111f1U, 0x923f82a4U,
    0xab1c5ed5U, 0xd807aa98U, 0x12835b01U, 0x243185beU, 0x550c7dc3U, 0x72be5d74U, 0x80deb1feU,
    0x9bdc06a7U, 0xc19bf174U, 0xe49b69c1U, 0xefbe4786U, 0x0fc19dc6U, 0x240ca1ccU, 0x2de92c6fU,
    0x4a7484aaU, 0x5cb0a9dcU, 0x76f988daU, 0x983e5152U, 0xa831c66dU, 0xb00327c8U, 0xbf597fc7U,
    0xc6e00bf3U, 0xd5a79147U, 0x06ca6351U, 0x14292967U, 0x27b70a85U, 0x2e1b2138U, 0x4d2c6dfcU,
    0x53380d13U, 0x650a7354U, 0x766a0abbU, 0x81c2c92eU, 0x92722c85U, 0xa2bfe8a1U, 0xa81a664bU,
    0xc24b8b70U, 0xc76c51a3U, 0xd192e819U, 0xd6990624U, 0xf40e3585U, 0x106aa070U, 0x19a4c116U,
    0x1e376c08U, 0x2748774cU, 0x34b0bcb5U, 0x391c0cb3U, 0x4ed8aa4aU, 0x5b9cca4fU, 0x682e6ff3U,
    0x748f82eeU, 0x78a5636fU, 0x84c87814U, 0x8cc70208U, 0x90befffaU, 0xa4506cebU, 0xbef9a3f7U,
    0xc67178f2U,
};

__m128i wordsFrom(const unsigned char *data)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(data));
}

/// The next four words of the message schedule from the sixteen before them.
__attribute__((target("sha,sse4.1"))) inline __m128i scheduled(__m128i w16, __m128i w12, __m128i w8,
                                                               __m128i w4)
{
    const __m128i w7 = _mm_alignr_epi8(w4, w8, 4);
    return _mm_sha256msg2_epu32(_mm_add_epi32(_mm_sha256msg1_epu32(w16, w12), w7), w4);
}

} // namespace

bool sha256BlocksSupported()
{
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    const bool sse41 = __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_SSE4_1) != 0;
    return sse41 && __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & bit_SHA) != 0;
}

__attribute__((target("sha,sse4.1"))) void
sha256Blocks(std::uint32_t *state, const unsigned char *data, std::size_t blocks)
{
    // The instructions want the state's words as (f, e, b, a) and (h, g, d, c).
    const auto *s = reinterpret_cast<const int *>(state);
    __m128i abef = _mm_set_epi32(s[0], s[1], s[4], s[5]);
    __m128i cdgh = _mm_set_epi32(s[2], s[3], s[6], s[7]);
    const __m128i bigEndian = _mm_set_epi8(12, 13, 14, 15, 8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3);
    for (; blocks > 0; --blocks, data += 64) {
        const __m128i abefBefore = abef;
        const __m128i cdghBefore = cdgh;
        __m128i w[4];
#pragma GCC unroll 16
        for (unsigned i = 0; i < 16; ++i) {
            w[i % 4] = i < 4 ? _mm_shuffle_epi8(wordsFrom(data + 16 * i), bigEndian)
                             : scheduled(w[i % 4], w[(i + 1) % 4], w[(i + 2) % 4], w[(i + 3) % 4]);
            const __m128i k =
                _mm_load_si128(reinterpret_cast<const __m128i *>(RoundConstants + 4 * i));
            const __m128i sum = _mm_add_epi32(w[i % 4], k);
            const __m128i half = _mm_sha256rnds2_epu32(cdgh, abef, sum);
            const __m128i whole = _mm_sha256rnds2_epu32(abef, half, _mm_shuffle_epi32(sum, 0x0e));
            cdgh = half;
            abef = whole;
        }
        abef = _mm_add_epi32(abef, abefBefore);
        cdgh = _mm_add_epi32(cdgh, cdghBefore);
    }
    alignas(16) std::uint32_t feba[4];
    alignas(16) std::uint32_t hgdc[4];
    _mm_store_si128(reinterpret_cast<__m128i *>(feba), abef);
    _mm_store_si128(reinterpret_cast<__m128i *>(hgdc), cdgh);
    state[0] = feba[3];
    state[1] = feba[2];
    state[4] = feba[1];
    state[5] = feba[0];
    state[2] = hgdc[3];
    state[3] = hgdc[2];
    state[6] = hgdc[1];
    state[7] = hgdc[0];
}

#else

bool sha256BlocksSupported()
{
    return false;
}

void sha256Blocks(std::uint32_t *, const unsigned char *, std::size_t) {}

#endif

} // namespace KODMS::Services
