// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/imports/ReadJob.h"

#include "services/archive/ArchiveType.h"
#include "services/disk/IoFailure.h"
#include "services/odbpp/OdbJobReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("JobImport", text);
}

Outcome refused(const QString &text, const char *cause, const QString &path)
{
    return Outcome::failure(text, QStringLiteral("%1: %2").arg(path, QLatin1String(cause)));
}

Result<FileHandle::Stamp> stampOf(const QString &path)
{
    const auto file = FileHandle::openForReading(path);
    if (!file)
        return file.outcome;
    return file.value.stamp();
}

Outcome readStamp(ReadJob &read, const LimitSettings &limits)
{
    const auto stamp = stampOf(read.path);
    if (!stamp)
        return stamp.outcome;
    read.stamp = stamp.value;
    read.size = stamp.value.size;
    if (read.size > limits.archiveBytes)
        return refused(tr("文件超过 %1 字节").arg(limits.archiveBytes), "too large", read.path);
    read.type = recordedArchiveType(read.path);
    return read.type == QLatin1String("kos")
               ? refused(tr("kos格式无需导入"), "needs no import", read.path)
               : Outcome::success();
}

} // namespace

Outcome changedSinceRead(const QString &path)
{
    return refused(tr("文件在读取后被修改，请重新选择"), "changed since it was read", path);
}

Result<ReadJob> ReadJob::at(const QString &path, const LimitSettings &limits, Progress &progress)
{
    const QFileInfo info(QDir::cleanPath(path));
    if (info.isSymLink())
        return refused(tr("这是链接，请选择它所指的文件或文件夹"), "a link", path);
    if (!info.exists())
        return ioFailure("open", path, ENOENT);
    ReadJob read;
    read.path = info.absoluteFilePath();
    read.isFolder = info.isDir();
    if (!read.isFolder) {
        if (Outcome good = readStamp(read, limits); !good)
            return good;
    }
    auto job = readOdbJob(read.path, limits, progress);
    if (!job)
        return job.outcome;
    read.job = job.value;
    if (read.isFolder) {
        read.size = job.value.bytes;
        return read;
    }
    if (Outcome same = read.isUnchanged(); !same)
        return same;
    return read;
}

Outcome ReadJob::isUnchanged() const
{
    const auto now = stampOf(path);
    return now && now.value == stamp ? Outcome::success() : changedSinceRead(path);
}

} // namespace KODMS::Services
