// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// Passwords as Argon2id hashes with interactive limits (64 MiB, about 0.1 s).
class PasswordHash {
public:
    /// A self-describing text (parameters, salt, hash); empty when the memory for
    /// it could not be had.
    static QString make(const QString &password);

    /// False for a wrong password and for a text that is no hash. A text that is
    /// empty or no hash takes as long as a wrong password does.
    static bool matches(const QString &hash, const QString &password);

    /// True when `hash` was made with other limits than today's.
    static bool isOutdated(const QString &hash);
};

} // namespace KODMS::Services
