// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Sha256.h"

#include "services/disk/Sha256Blocks.h"

#include <sodium.h>

#include <algorithm>
#include <cstring>

namespace KODMS::Services {

namespace {

constexpr std::size_t BlockSize = 64;
constexpr std::array<std::uint32_t, 8> InitialState{0x6a09e667U, 0xbb67ae85U, 0x3c6ef372U,
                                                    0xa54ff53aU, 0x510e527fU, 0x9b05688cU,
                                                    0x1f83d9abU, 0x5be0cd19U};

crypto_hash_sha256_state *sodiumState(std::array<unsigned char, 128> &storage)
{
    static_assert(sizeof(crypto_hash_sha256_state) <= 128, "the hash's state must fit");
    return reinterpret_cast<crypto_hash_sha256_state *>(storage.data());
}

} // namespace

Sha256::Sha256() : Sha256(isAccelerated()) {}

Sha256::Sha256(bool accelerated) : m_accelerated(accelerated), m_state(InitialState)
{
    if (!m_accelerated)
        crypto_hash_sha256_init(sodiumState(m_sodium));
}

Sha256 Sha256::portable()
{
    return Sha256(false);
}

bool Sha256::isAccelerated()
{
    static const bool can = sha256BlocksSupported();
    return can;
}

QByteArray Sha256::of(const QByteArray &data)
{
    Sha256 hash;
    hash.add(data.constData(), data.size());
    return hash.finish();
}

void Sha256::add(const char *data, qint64 size)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(data);
    if (m_accelerated)
        addAccelerated(bytes, static_cast<std::size_t>(size));
    else
        crypto_hash_sha256_update(sodiumState(m_sodium), bytes,
                                  static_cast<unsigned long long>(size));
}

void Sha256::addAccelerated(const unsigned char *data, std::size_t size)
{
    m_total += size;
    if (m_blockFill > 0) {
        const std::size_t taken = std::min(size, BlockSize - m_blockFill);
        std::copy_n(data, taken, m_block.begin() + static_cast<std::ptrdiff_t>(m_blockFill));
        m_blockFill += taken;
        data += taken;
        size -= taken;
        if (m_blockFill < BlockSize)
            return;
        sha256Blocks(m_state.data(), m_block.data(), 1);
        m_blockFill = 0;
    }
    const std::size_t blocks = size / BlockSize;
    sha256Blocks(m_state.data(), data, blocks);
    m_blockFill = size - blocks * BlockSize;
    std::copy_n(data + blocks * BlockSize, m_blockFill, m_block.begin());
}

void Sha256::finishAccelerated(unsigned char *digest)
{
    const std::uint64_t bits = m_total * 8;
    std::array<unsigned char, 2 * BlockSize> tail{};
    std::copy_n(m_block.begin(), m_blockFill, tail.begin());
    tail[m_blockFill] = 0x80;
    const std::size_t blocks = m_blockFill + 9 <= BlockSize ? 1 : 2;
    for (std::size_t i = 0; i < 8; ++i)
        tail[blocks * BlockSize - 1 - i] = static_cast<unsigned char>((bits >> (8 * i)) & 0xffU);
    sha256Blocks(m_state.data(), tail.data(), blocks);
    for (std::size_t i = 0; i < 32; ++i)
        digest[i] = static_cast<unsigned char>((m_state[i / 4] >> (24 - 8 * (i % 4))) & 0xffU);
}

QByteArray Sha256::finish()
{
    std::array<unsigned char, crypto_hash_sha256_BYTES> digest{};
    if (m_accelerated)
        finishAccelerated(digest.data());
    else
        crypto_hash_sha256_final(sodiumState(m_sodium), digest.data());
    return QByteArray(reinterpret_cast<const char *>(digest.data()),
                      static_cast<int>(digest.size()))
        .toHex();
}

} // namespace KODMS::Services
