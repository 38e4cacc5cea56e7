// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ProcessClock.h"

#if defined(Q_OS_LINUX)
#include <QFile>

#include <ctime>
#include <unistd.h>
#elif defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace KODMS::Host {

#if defined(Q_OS_LINUX)

qint64 ProcessClock::sinceProcessStart()
{
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = file.readAll();
    // The second field is the program's name in brackets and may hold blanks.
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr int StartTimeField = 19;
    const qint64 ticks = fields.value(StartTimeField).toLongLong();
    timespec now{};
    if (ticks == 0 || clock_gettime(CLOCK_BOOTTIME, &now) != 0)
        return -1;
    const qint64 started = ticks * 1000 / sysconf(_SC_CLK_TCK);
    return static_cast<qint64>(now.tv_sec) * 1000 + now.tv_nsec / 1000000 - started;
}

#elif defined(Q_OS_WIN)

qint64 ProcessClock::sinceProcessStart()
{
    FILETIME created, exited, kernel, user, now;
    if (!GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user))
        return -1;
    GetSystemTimeAsFileTime(&now);
    const auto number = [](const FILETIME &time) {
        return (static_cast<qint64>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    };
    return (number(now) - number(created)) / 10000;
}

#else

qint64 ProcessClock::sinceProcessStart()
{
    return -1;
}

#endif

} // namespace KODMS::Host
