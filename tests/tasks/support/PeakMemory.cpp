// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tasks/support/PeakMemory.h"

#include <QFile>

namespace KODMS::Tests {

namespace {

qint64 kibibytesOf(const QByteArray &key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

/// Lowers the peak to what is held now.
bool forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write("5") == 1;
}

} // namespace

PeakMemory::PeakMemory()
{
    if (forgetPeak())
        m_start = kibibytesOf("VmRSS") * 1024;
}

qint64 PeakMemory::aboveStart() const
{
    return kibibytesOf("VmHWM") * 1024 - m_start;
}

} // namespace KODMS::Tests
