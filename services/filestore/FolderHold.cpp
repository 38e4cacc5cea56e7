// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderHold.h"

#include "services/filestore/FolderSweeper.h"
#include "services/filestore/HashedStream.h"

#include <QCoreApplication>
#include <QDir>

namespace KODMS::Services {

FolderHold::FolderHold(FolderLayout layout, FileLock lock)
    : m_layout(std::move(layout)), m_lock(std::move(lock))
{
}

Result<std::unique_ptr<StoreHold>> FolderHold::create(const FolderLayout &layout)
{
    if (Outcome made = makeFolder(layout.live()); !made)
        return made;
    Result<FileLock> lock = FileLock::create(layout.holdLock(FolderLayout::newId()));
    if (!lock)
        return lock.outcome;
    return std::unique_ptr<StoreHold>(new FolderHold(layout, std::move(lock.value)));
}

FolderHold::~FolderHold()
{
    {
        const FileLock released = std::move(m_lock);
    }
    // What cannot be removed now is removed by the next sweep.
    const Outcome swept = FolderSweeper(m_layout).sweep();
    Q_UNUSED(swept)
}

Result<StoredEntry> FolderHold::entry(const QString &name) const
{
    // A file on its way to the trash is in one place or the other, and never comes back.
    Result<StoredEntry> stored = StoredEntry::read(name, m_layout.entry(name));
    if (stored)
        return stored;
    const QDir trash(m_layout.trash());
    const QStringList removed = trash.entryList({name + QStringLiteral("@*")}, QDir::Dirs);
    for (const QString &folder : removed)
        if (auto found = StoredEntry::read(name, trash.filePath(folder)))
            return found;
    return stored;
}

Result<StoredFileInfo> FolderHold::find(const QString &name) const
{
    Result<StoredEntry> found = entry(name);
    if (!found)
        return found.outcome;
    return found.value.info;
}

Outcome FolderHold::read(const QString &name, const ByteSink &sink, Progress &progress) const
{
    // Removed between being found and being opened: then it is in the trash now.
    Result<StoredEntry> found = entry(name);
    Result<FileHandle> body = found ? FileHandle::openForReading(found.value.bodyPath)
                                    : Result<FileHandle>(found.outcome);
    if (found && !body) {
        found = entry(name);
        body = found ? FileHandle::openForReading(found.value.bodyPath)
                     : Result<FileHandle>(found.outcome);
    }
    if (!body)
        return body.outcome;
    const Result<StreamSums> sums = streamHashed(body.value, sink, progress);
    if (!sums)
        return sums.outcome;
    return compareSums(found.value.info, sums.value);
}

} // namespace KODMS::Services
