// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/IntakeFile.h"

#include "services/archive/ArchiveProbe.h"
#include "services/archive/ArchiveType.h"
#include "services/archive/FolderPacker.h"
#include "services/disk/FileHandle.h"
#include "services/disk/IoFailure.h"
#include "services/disk/StagedFile.h"
#include "services/notices/OneLine.h"
#include "services/records/Guid.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace KODMS::Services {

namespace {

struct IntakeFileTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::IntakeFile)

public:
    static Outcome failure(const QString &text, const char *cause, const QString &path)
    {
        return Outcome::failure(text, QStringLiteral("%1: %2").arg(path, QLatin1String(cause)));
    }

    static Outcome noPath() { return failure(tr("没有指定文件或文件夹"), "no path", QString()); }

    static Outcome link(const QString &path)
    {
        return failure(tr("这是链接，请指定它所指的文件或文件夹：%1").arg(path), "a link", path);
    }

    static Outcome special(const QString &path)
    {
        return failure(tr("不是文件或文件夹：%1").arg(path), "neither file nor folder", path);
    }

    static Outcome empty(const QString &path)
    {
        return failure(tr("文件是空的：%1").arg(path), "empty", path);
    }

    static Outcome noFiles(const QString &path)
    {
        return failure(tr("压缩包中没有文件：%1").arg(path), "an archive without files", path);
    }

    static Outcome tooLarge(const QString &path, qint64 limit)
    {
        return failure(tr("文件超过 %1 字节：%2").arg(limit).arg(path), "too large", path);
    }

    static Outcome notAnArchive(const QString &path)
    {
        return failure(tr("不是可识别的压缩包（zip、rar、tgz、tar、7z、kos）：%1").arg(path),
                       "no known archive", path);
    }

    static Outcome changed(const QString &path)
    {
        return failure(tr("文件在接收时被修改：%1").arg(path), "changed meanwhile", path);
    }
};

Outcome checkArchiveFile(const QFileInfo &info, const LimitSettings &limits)
{
    const QString path = info.filePath();
    if (info.size() == 0)
        return IntakeFileTexts::empty(path);
    if (info.size() > limits.archiveBytes)
        return IntakeFileTexts::tooLarge(path, limits.archiveBytes);
    const auto opened = FileHandle::openForReading(path);
    if (!opened)
        return opened.outcome;
    return sniffArchiveType(path) == ArchiveType::Unknown ? IntakeFileTexts::notAnArchive(path)
                                                          : Outcome::success();
}

/// The file's name without the suffix of an archive, which may have two parts.
QString archiveName(const QFileInfo &info)
{
    const QString tar = QStringLiteral(".tar");
    const QString name = info.completeBaseName();
    return name.endsWith(tar, Qt::CaseInsensitive) ? name.chopped(tar.size()) : name;
}

Result<FileHandle::Stamp> stampOf(const QString &path)
{
    const auto file = FileHandle::openForReading(path);
    if (!file)
        return file.outcome;
    return file.value.stamp();
}

} // namespace

Result<IntakeFile> IntakeFile::at(const QString &path, const LimitSettings &limits)
{
    if (path.isEmpty())
        return IntakeFileTexts::noPath();
    const QFileInfo info(QDir::cleanPath(path));
    if (info.isSymLink())
        return IntakeFileTexts::link(path);
    if (!info.exists())
        return ioFailure("open", path, ENOENT);
    IntakeFile file;
    file.m_path = info.absoluteFilePath();
    file.m_limits = limits;
    file.m_isFolder = info.isDir();
    if (!file.m_isFolder) {
        if (!info.isFile())
            return IntakeFileTexts::special(path);
        if (Outcome good = checkArchiveFile(info, limits); !good)
            return good;
        file.m_type = recordedArchiveType(file.m_path);
    }
    const QFileInfo whole(file.m_path);
    file.m_baseName = file.m_isFolder ? whole.fileName() : archiveName(whole);
    if (file.m_baseName.isEmpty())
        file.m_baseName = whole.fileName();
    file.m_baseName = oneLine(file.m_baseName); // files may be named with line breaks
    file.m_storedName =
        newGuid() + QLatin1Char('.') + (file.m_isFolder ? QStringLiteral("zip") : file.m_type);
    return file;
}

Outcome IntakeFile::putInto(FileStore &store, const QString &staging, Progress &progress) const
{
    return m_isFolder ? putFolder(store, staging, progress) : putArchive(store, progress);
}

Outcome IntakeFile::putArchive(FileStore &store, Progress &progress) const
{
    const auto before = stampOf(m_path);
    if (!before)
        return before.outcome;
    const auto probed = probeArchive(m_path, m_limits, progress);
    if (!probed)
        return probed.outcome;
    if (probed.value.files == 0)
        return IntakeFileTexts::noFiles(m_path);
    if (Outcome stored = store.put(m_path, m_storedName, progress); !stored)
        return stored;
    // What is stored must be what was read and found good.
    const auto after = stampOf(m_path);
    if (after && after.value == before.value)
        return Outcome::success();
    const Outcome removed = store.remove(m_storedName);
    return removed ? IntakeFileTexts::changed(m_path) : removed;
}

Outcome IntakeFile::putFolder(FileStore &store, const QString &staging, Progress &progress) const
{
    if (Outcome made = makeFolder(QDir(staging).absolutePath()); !made)
        return made;
    const StagedFile zip(QDir(staging).absoluteFilePath(m_storedName));
    const auto packed = packFolder(m_path, zip.path(), m_limits, progress);
    if (!packed)
        return packed.outcome;
    return store.put(zip.path(), m_storedName, progress);
}

} // namespace KODMS::Services
