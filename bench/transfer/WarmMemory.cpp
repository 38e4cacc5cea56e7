// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/WarmMemory.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>
#include <vector>

namespace KODMS::Bench {

namespace {

constexpr qint64 MiB = 1 << 20;
constexpr qint64 Room = 1024 * MiB;

qint64 availableMemory()
{
    QFile info(QStringLiteral("/proc/meminfo"));
    if (!info.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : info.readAll().split('\n'))
        if (line.startsWith("MemAvailable:"))
            return line.simplified().split(' ').at(1).toLongLong() * 1024;
    return 0;
}

void read(const QString &path)
{
    static std::vector<char> buffer(MiB);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw std::runtime_error("cannot read " + path.toStdString());
    while (file.read(buffer.data(), static_cast<qint64>(buffer.size())) > 0) {
    }
}

} // namespace

WarmMemory::WarmMemory(const QString &path) : m_path(path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !file.resize(qMax(MiB, availableMemory() - Room)))
        throw std::runtime_error("cannot write " + path.toStdString());
}

void WarmMemory::prepare(const QStringList &sources) const
{
    read(m_path);
    for (const QString &source : sources) {
        if (QFileInfo(source).isFile())
            read(source);
        QDirIterator it(source, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            read(it.next());
    }
}

} // namespace KODMS::Bench
