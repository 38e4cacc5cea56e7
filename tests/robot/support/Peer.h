// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/robot/support/RawSocket.h"

#include <QByteArray>
#include <QString>

namespace KODMS::Tests {

/// A client of the robot that can misbehave: one connection, on a socket of its own. While it
/// waits, the event loop runs.
class Peer {
public:
    explicit Peer(quint16 port) : m_socket(port) {}

    bool isConnected() const { return m_socket.isOpen(); }

    /// Sends everything; false when the other side has had enough.
    bool send(const QByteArray &bytes);

    /// Nothing more will be sent; what the robot answers can still be read.
    void halfClose() { m_socket.endSending(); }

    /// Ends the connection so that the robot gets an error instead of an end.
    void reset() { m_socket.breakOff(); }

    /// Closes without reading what came.
    void close() { m_socket.close(); }

    /// What has come so far, without waiting.
    QByteArray received();
    /// What comes until the robot closes; `isOver` tells whether it did within `patienceMs`.
    QByteArray answer(bool *isOver = nullptr, int patienceMs = 20000);

private:
    RawSocket m_socket;
    QByteArray m_received;
    bool m_isOver = false;
};

} // namespace KODMS::Tests
