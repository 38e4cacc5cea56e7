// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/IncomingFolder.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"

namespace KODMS::Services {

IncomingFolder::IncomingFolder(QString owner, QString folder, FileLock lock)
    : m_owner(std::move(owner)), m_folder(std::move(folder)), m_lock(std::move(lock))
{
}

Result<std::unique_ptr<IncomingFolder>> IncomingFolder::create(const FolderLayout &layout)
{
    for (const QString &folder : {layout.live(), layout.incoming(), layout.files(), layout.trash()})
        if (Outcome made = makeFolder(folder); !made)
            return made;
    const QString owner = FolderLayout::newId();
    // The lock comes first: a folder without one is taken for a remain.
    Result<FileLock> lock = FileLock::create(layout.ownerLock(owner));
    if (!lock)
        return lock.outcome;
    const QString folder = layout.incoming() + QLatin1Char('/') + owner;
    if (Outcome made = makeFolder(folder); !made)
        return made;
    return std::unique_ptr<IncomingFolder>(
        new IncomingFolder(owner, folder, std::move(lock.value)));
}

IncomingFolder::~IncomingFolder()
{
    discardSlot(m_folder);
}

Result<QString> IncomingFolder::newSlot() const
{
    const QString slot = m_folder + QLatin1Char('/') + FolderLayout::newId();
    if (Outcome made = makeFolder(slot); !made)
        return made;
    return slot;
}

void IncomingFolder::discardSlot(const QString &slot)
{
    std::error_code ignored;
    Disk::removeAll(fsPath(slot), ignored);
}

} // namespace KODMS::Services
