// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Tests {

/// A socket of the operating system, without anybody between it and the test.
class RawSocket {
public:
    /// Connects to loopback; does not wait from then on.
    explicit RawSocket(quint16 port);
    ~RawSocket();
    RawSocket(const RawSocket &) = delete;
    RawSocket &operator=(const RawSocket &) = delete;

    static constexpr int Later = -1; ///< nothing now
    static constexpr int Over = -2;  ///< the other side is gone

    bool isOpen() const { return m_isOpen; }

    /// Bytes, at least one, or Later or Over.
    int send(const char *data, int size);
    int receive(char *buffer, int size);
    /// Until something can be received, or the time is over.
    void waitForData(int milliseconds);

    void endSending();
    /// Closing tells the other side of an error instead of an end.
    void breakOff();
    void close();

private:
    qintptr m_socket;
    bool m_isOpen = false;
};

} // namespace KODMS::Tests
