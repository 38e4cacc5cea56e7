// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/RobotPeer.h"

#include <winsock2.h>

namespace KODMS::Tests {

namespace {

/// More than any system adds to a queue of length 0.
constexpr int QueuedAttempts = 16;

} // namespace

BlackHole::BlackHole()
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof place;
    auto *address = reinterpret_cast<sockaddr *>(&place);
    WSADATA started{};
    if (::WSAStartup(MAKEWORD(2, 2), &started) != 0)
        qFatal("the test's own peer: no sockets");
    const SOCKET listening = ::socket(AF_INET, SOCK_STREAM, 0);
    m_handles << static_cast<qintptr>(listening);
    if (::bind(listening, address, size) != 0 || ::listen(listening, 0) != 0 ||
        ::getsockname(listening, address, &size) != 0)
        qFatal("the test's own peer: cannot listen");
    m_port = ntohs(place.sin_port);
    for (int attempt = 0; attempt < QueuedAttempts; ++attempt) {
        const SOCKET waiting = ::socket(AF_INET, SOCK_STREAM, 0);
        u_long isOn = 1;
        ::ioctlsocket(waiting, FIONBIO, &isOn);
        m_handles << static_cast<qintptr>(waiting);
        static_cast<void>(::connect(waiting, address, size)); // waits; that is the point
    }
}

BlackHole::~BlackHole()
{
    for (const qintptr handle : qAsConst(m_handles))
        ::closesocket(static_cast<SOCKET>(handle));
    ::WSACleanup();
}

} // namespace KODMS::Tests
