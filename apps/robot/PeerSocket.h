// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Robot {

/// The system's socket of an accepted peer, closed with the object. Never blocks.
class PeerSocket {
public:
    /// Takes over an accepted socket.
    explicit PeerSocket(qintptr socket);
    ~PeerSocket();
    PeerSocket(const PeerSocket &) = delete;
    PeerSocket &operator=(const PeerSocket &) = delete;

    qintptr handle() const { return m_socket; }

    /// "127.0.0.1:7071", "[::1]:7071".
    QString peerText() const;

    /// What receive() and send() say when no byte went over.
    static constexpr int Later = -1;  ///< nothing now, it may be asked again
    static constexpr int Broken = -2; ///< nothing any more

    /// 0 when the peer sends nothing more.
    int receive(char *buffer, int size);
    int send(const char *data, int size);
    /// Tells the peer that nothing more comes; it may still send.
    void endSending();
    void close();

private:
    qintptr m_socket;
    bool m_isOpen = true;
};

} // namespace KODMS::Robot
