// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/RobotPeer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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
    socklen_t size = sizeof place;
    auto *address = reinterpret_cast<sockaddr *>(&place);
    const int listening = ::socket(AF_INET, SOCK_STREAM, 0);
    m_handles << listening;
    if (::bind(listening, address, size) != 0 || ::listen(listening, 0) != 0 ||
        ::getsockname(listening, address, &size) != 0)
        qFatal("the test's own peer: cannot listen");
    m_port = ntohs(place.sin_port);
    for (int attempt = 0; attempt < QueuedAttempts; ++attempt) {
        const int waiting = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
        m_handles << waiting;
        static_cast<void>(::connect(waiting, address, size)); // waits; that is the point
    }
}

BlackHole::~BlackHole()
{
    for (const qintptr handle : qAsConst(m_handles))
        ::close(static_cast<int>(handle));
}

} // namespace KODMS::Tests
