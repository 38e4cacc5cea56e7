// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Unpacker.h"

#include "services/archive/FolderMerge.h"
#include "services/archive/UnpackFolder.h"

#include <QDir>
#include <QFileInfo>

namespace KODMS::Services {

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
    const auto summary = ArchiveWalk(limits, progress).run(archivePath, *staging.value);
    if (!summary)
        return summary.outcome;
    if (summary.value.files == 0)
        return qint64{0};
    if (Outcome moved = FolderMerge(staging.value->path(), real).run(); !moved)
        return moved;
    return summary.value.files;
}

} // namespace KODMS::Services
