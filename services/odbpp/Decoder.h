// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>

namespace KODMS::Services {

/// Unpacks a compressed file of which the bytes come piece by piece.
class Decoder {
public:
    /// Takes unpacked bytes; false when it wants no more.
    using Taker = std::function<bool(const char *bytes, std::size_t size)>;

    Decoder() = default;
    virtual ~Decoder() = default;
    Decoder(const Decoder &) = delete;
    Decoder &operator=(const Decoder &) = delete;

    /// False on damage, or when `take` wanted no more.
    virtual bool add(const char *bytes, std::size_t size, const Taker &take) = 0;
    /// False when the file is cut short.
    virtual bool finish(const Taker &take) = 0;

    /// English, for the log; null when nothing is damaged.
    const char *damage() const { return m_damage; }

protected:
    bool damaged(const char *text)
    {
        m_damage = text;
        return false;
    }

private:
    const char *m_damage = nullptr;
};

} // namespace KODMS::Services
