// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/ServerLoad.h"

#include <QFile>

#include <ctime>
#include <numeric>
#include <unistd.h>

namespace KODMS::Bench {

namespace {

QByteArray processFile(int pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Own time, and with `withEnded` that of children which have ended.
qint64 ticksOf(int pid, bool withEnded)
{
    const QByteArray text = processFile(pid, "stat");
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr int firstTime = 11; // utime, stime, cutime, cstime, counted behind the name
    if (fields.size() < firstTime + 4)
        return 0;
    qint64 ticks = 0;
    for (int i = 0; i < (withEnded ? 4 : 2); ++i)
        ticks += fields[firstTime + i].toLongLong();
    return ticks;
}

qint64 privateBytesOf(int pid)
{
    qint64 kilobytes = 0;
    for (const QByteArray &line : processFile(pid, "smaps_rollup").split('\n')) {
        if (line.startsWith("Private_"))
            kilobytes += line.simplified().split(' ').value(1).toLongLong();
    }
    return kilobytes * 1024;
}

double milliseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

QVector<int> ServerLoad::children() const
{
    QVector<int> pids;
    const QByteArray name = QByteArray("task/") + QByteArray::number(m_pid) + "/children";
    for (const QByteArray &pid : processFile(m_pid, name.constData()).simplified().split(' ')) {
        if (pid.toInt() > 0)
            pids << pid.toInt();
    }
    return pids;
}

double ServerLoad::processorMs() const
{
    qint64 ticks = ticksOf(m_pid, true);
    for (const int pid : children())
        ticks += ticksOf(pid, false);
    return 1e3 * static_cast<double>(ticks) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

QVector<int> ServerLoad::connectionPids() const
{
    QVector<int> pids;
    for (const int pid : children()) {
        if (processFile(pid, "cmdline").contains(" 127.0.0.1("))
            pids << pid;
    }
    return pids;
}

int ServerLoad::connections() const
{
    return connectionPids().size();
}

qint64 ServerLoad::bytesOfAConnection() const
{
    const QVector<int> pids = connectionPids();
    qint64 bytes = 0;
    for (const int pid : pids)
        bytes += privateBytesOf(pid);
    return pids.isEmpty() ? 0 : bytes / pids.size();
}

double threadProcessorMs()
{
    return milliseconds(CLOCK_THREAD_CPUTIME_ID);
}

qint64 ownBytes()
{
    return privateBytesOf(getpid());
}

} // namespace KODMS::Bench
