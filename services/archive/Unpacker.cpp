// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Unpacker.h"

#include "services/archive/FolderMerge.h"
#include "services/archive/UnpackFolder.h"

#include <QDir>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

Result<qint64> unpackInto(UnpackFolder &folder, const QString &archivePath,
                          const LimitSettings &limits, Progress &progress)
{
    const auto summary = ArchiveWalk(limits, progress).run(archivePath, folder);
    if (!summary)
        return summary.outcome;
    if (Outcome written = folder.finish(); !written)
        return written;
    return summary.value.files;
}

} // namespace

Result<qint64> unpackArchive(const QString &archivePath, const QString &targetFolder,
                             const LimitSettings &limits, Progress &progress)
{
    const QString target = QDir::cleanPath(QDir(targetFolder).absolutePath());
    // Beside the place where the folder really is, so that moving is renaming.
    const QFileInfo targetInfo(target);
    const QString real = targetInfo.exists() ? targetInfo.canonicalFilePath() : target;
    const auto staging = UnpackFolder::create(QFileInfo(real).path());
    if (!staging)
        return staging.outcome;
    auto files = unpackInto(*staging.value, archivePath, limits, progress);
    if (files && files.value > 0) {
        const Outcome moved = FolderMerge(staging.value->path(), real).run(progress);
        if (!moved)
            files = moved;
    }
    if (!files && progress.isCancelled())
        staging.value->abandon();
    return files;
}

} // namespace KODMS::Services
