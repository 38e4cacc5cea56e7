// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/QuitOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace KODMS::Robot {

namespace {

int g_toLoop = -1; // the writing end of the pipe; a signal handler has no other way in

extern "C" void wakeLoop(int)
{
    const char byte = 0;
    const ssize_t written = ::write(g_toLoop, &byte, 1);
    static_cast<void>(written); // a full pipe has woken the loop already
}

} // namespace

QuitOnSignal::QuitOnSignal()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    g_toLoop = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    m_isWatching = true;
    struct sigaction action = {};
    action.sa_handler = wakeLoop;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace KODMS::Robot
