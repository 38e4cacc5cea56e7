// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderSweeper.h"

#include "services/disk/Disk.h"
#include "services/disk/FileLock.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/filestore/StoredEntry.h"

#include <QDir>

namespace KODMS::Services {

namespace {

constexpr auto Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QStringList childrenOf(const QString &folder)
{
    const QDir dir(folder);
    QStringList children;
    for (const QString &name : dir.entryList(Everything, QDir::Name))
        children << dir.filePath(name);
    return children;
}

} // namespace

QStringList FolderSweeper::deadIncoming() const
{
    QStringList dead;
    for (const QString &folder : childrenOf(m_layout.incoming()))
        if (!FileLock::isAlive(m_layout.ownerLock(QFileInfo(folder).fileName())))
            dead << folder;
    return dead;
}

QStringList FolderSweeper::freeTrash() const
{
    // Listed before the holds are looked at: what a later hold needs is not in the list.
    const QStringList trash = childrenOf(m_layout.trash());
    return trash.isEmpty() || hasLiveHold(m_layout) ? QStringList() : trash;
}

QStringList FolderSweeper::foreign() const
{
    QStringList found;
    const QStringList known{m_layout.files(), m_layout.incoming(), m_layout.trash(),
                            m_layout.live()};
    for (const QString &path : childrenOf(m_layout.place()))
        if (!known.contains(path))
            found << path;
    for (const QString &fan : childrenOf(m_layout.files())) {
        if (!QFileInfo(fan).isDir())
            found << fan;
        for (const QString &entry : childrenOf(fan)) {
            const QString name = QFileInfo(entry).fileName();
            const bool isEntry = FileStore::isValidStoredName(name) &&
                                 m_layout.entry(name) == entry && StoredEntry::read(name, entry);
            if (!isEntry)
                found << entry;
        }
    }
    return found;
}

Outcome FolderSweeper::sweep() const
{
    for (const QString &path : deadIncoming() + freeTrash()) {
        std::error_code error;
        Disk::removeAll(fsPath(path), error);
        if (error)
            return ioFailure("remove", path, error.value());
    }
    for (const QString &lock : childrenOf(m_layout.live()))
        FileLock::isAlive(lock);
    return Outcome::success();
}

} // namespace KODMS::Services
