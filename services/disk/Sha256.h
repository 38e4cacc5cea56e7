// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <memory>

namespace KODMS::Services {

/// SHA-256 of a stream of bytes. libcrypto computes it, and on Windows the system itself, with
/// the processor's own instructions where it has them. Any thread, one at a time.
class Sha256 {
public:
    Sha256();
    Sha256(Sha256 &&) noexcept;
    Sha256 &operator=(Sha256 &&) noexcept;
    ~Sha256();

    void add(const char *data, qint64 size);
    /// 64 lower-case hexadecimal digits; nothing can be added afterwards.
    QByteArray finish();

    static QByteArray of(const QByteArray &data);
    /// The version of libcrypto; empty where the system computes it.
    static QByteArray libraryVersion();

private:
    struct Context;
    std::unique_ptr<Context> m_context;
};

} // namespace KODMS::Services
