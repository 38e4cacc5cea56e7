// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>

namespace KODMS::Services {

/// SHA-256 of a stream of bytes, on the processor's own instructions where it has
/// them (about four times the speed of portable code), else through libsodium.
class Sha256 {
public:
    Sha256();

    void add(const char *data, qint64 size);
    /// 64 lower-case hexadecimal digits; nothing can be added afterwards.
    QByteArray finish();

    static QByteArray of(const QByteArray &data);
    static bool isAccelerated();
    /// The portable path, whatever the processor can do.
    static Sha256 portable();

private:
    explicit Sha256(bool accelerated);
    void addAccelerated(const unsigned char *data, std::size_t size);
    void finishAccelerated(unsigned char *digest);

    bool m_accelerated;
    std::array<std::uint32_t, 8> m_state;
    std::array<unsigned char, 64> m_block{};
    std::size_t m_blockFill = 0;
    std::uint64_t m_total = 0;
    alignas(16) std::array<unsigned char, 128> m_sodium{};
};

} // namespace KODMS::Services
