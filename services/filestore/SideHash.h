// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/BoundedQueue.h"
#include "services/disk/Sha256.h"

#include <thread>
#include <vector>

namespace KODMS::Services {

/// SHA-256 of bytes that come piece by piece, computed on a thread of its own while
/// the caller reads and writes the next pieces. A stream of one piece needs no thread.
class SideHash {
public:
    struct Piece {
        std::vector<char> bytes;
        qint64 size = 0; ///< of it filled
    };

    SideHash();
    ~SideHash();
    SideHash(const SideHash &) = delete;
    SideHash &operator=(const SideHash &) = delete;

    /// A piece to fill; waits while the hash is behind.
    Piece emptyPiece();
    void add(Piece piece);
    /// Once, after the last piece: 64 lower-case hexadecimal digits.
    QByteArray finish();

private:
    void run();

    Sha256 m_hash;
    std::size_t m_made = 0;
    BoundedQueue<Piece> m_full;
    BoundedQueue<Piece> m_empty;
    Piece m_first;
    std::thread m_thread;
};

} // namespace KODMS::Services
