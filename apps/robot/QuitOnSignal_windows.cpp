// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/QuitOnSignal.h"

#include <QCoreApplication>

#include <atomic>

#include <windows.h>

namespace KODMS::Robot {

namespace {

std::atomic<bool> g_asked{false};

/// On a thread of the system's. The second time the system ends the process.
BOOL WINAPI quitLoop(DWORD)
{
    if (g_asked.exchange(true))
        return FALSE;
    QMetaObject::invokeMethod(QCoreApplication::instance(), "quit", Qt::QueuedConnection);
    return TRUE;
}

} // namespace

QuitOnSignal::QuitOnSignal()
{
    m_isWatching = ::SetConsoleCtrlHandler(&quitLoop, TRUE) != 0;
}

} // namespace KODMS::Robot
