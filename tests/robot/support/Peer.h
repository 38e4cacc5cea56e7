// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::Tests {

/// A client of the robot that can misbehave: one connection, on a socket of its own. While it
/// waits, the event loop runs.
class Peer {
public:
    explicit Peer(quint16 port);
    ~Peer();

    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    bool isConnected() const { return m_socket >= 0; }

    /// Sends everything; false when the other side has had enough.
    bool send(const QByteArray &bytes);
    /// Nothing more will be sent; what the robot answers can still be read.
    void halfClose();
    /// Ends the connection so that the robot gets an error instead of an end.
    void reset();
    /// Closes without reading what came.
    void close();

    /// What has come so far, without waiting.
    QByteArray received();
    /// What comes until the robot closes; `isOver` tells whether it did within `patienceMs`.
    QByteArray answer(bool *isOver = nullptr, int patienceMs = 20000);

private:
    int m_socket = -1;
    QByteArray m_received;
    bool m_isOver = false;
};

} // namespace KODMS::Tests
