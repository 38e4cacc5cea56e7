// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderStore.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/disk/RunAside.h"
#include "services/filestore/FolderHold.h"
#include "services/filestore/FolderSweeper.h"
#include "services/filestore/HashedStream.h"
#include "services/filestore/LocalTarget.h"
#include "services/filestore/StoreFailures.h"

#include <QCoreApplication>
#include <QDir>

#include <cerrno>

namespace KODMS::Services {

namespace {

struct FolderStoreTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::FolderStore)

public:
    static QString place(const QString &folder) { return tr("文件夹 %1").arg(folder); }
};

bool isTaken(int error)
{
    return error == ENOTEMPTY || error == EEXIST || error == ENOTDIR;
}

/// A folder that another program works in keeps its name on some systems: then what is in it goes
/// alone, and the empty folder is in nobody's way.
void moveEntry(const QString &entry, const QString &body, const QString &to, std::error_code &error)
{
    Disk::rename(fsPath(entry), fsPath(to), error);
    if (error != std::errc::device_or_resource_busy)
        return;
    Disk::createFolders(fsPath(to), error);
    if (error)
        return;
    Disk::rename(fsPath(body), fsPath(to) / fsPath(body).filename(), error);
    std::error_code ignored;
    Disk::remove(fsPath(error ? to : entry), ignored);
}

/// The bytes of `source` in the new file `body`, by sharing blocks where possible.
Result<StreamSums> copyInto(FileHandle &body, FileHandle &source, Progress &progress)
{
    if (body.cloneFrom(source))
        return streamHashed(body, {}, progress);
    return streamHashed(
        source, [&body](const char *data, qint64 size) { return body.write(data, size); },
        progress);
}

} // namespace

Result<std::unique_ptr<FileStore>> FolderStore::open(const QString &root, const QString &database,
                                                     const QString &bucket)
{
    for (const QString &part : {database, bucket})
        if (!isValidStoredName(part))
            return badNameFailure(part);
    const FolderLayout layout(root, database, bucket);
    const QFileInfo rootInfo(root);
    if (rootInfo.exists() && !rootInfo.isDir())
        return ioFailure("open", root, ENOTDIR);
    auto store = std::unique_ptr<FileStore>(new FolderStore(layout));
    // A place that this user may only read is swept by those who write there.
    const Outcome swept = store->sweep();
    Q_UNUSED(swept)
    return store;
}

Result<StoredEntry> FolderStore::entry(const QString &name) const
{
    if (!isValidStoredName(name))
        return badNameFailure(name);
    return StoredEntry::read(name, m_layout.entry(name));
}

Result<IncomingFolder *> FolderStore::incoming()
{
    const std::lock_guard<std::mutex> guard(m_incomingMutex);
    if (!m_incoming) {
        auto made = IncomingFolder::create(m_layout);
        if (!made)
            return made.outcome;
        m_incoming = std::move(made.value);
    }
    return m_incoming.get();
}

Outcome FolderStore::put(const QString &localPath, const QString &name, Progress &progress)
{
    if (!isValidStoredName(name))
        return badNameFailure(name);
    if (entry(name))
        return takenFailure(name);
    const Result<IncomingFolder *> folder = incoming();
    if (!folder)
        return folder.outcome;
    const Result<QString> slot = folder.value->newSlot();
    if (!slot)
        return slot.outcome;
    Outcome done = fillSlot(localPath, slot.value, folder.value->owner(), progress);
    if (done)
        done = publishSlot(slot.value, name);
    if (!done && progress.isCancelled())
        runAside([path = slot.value] { IncomingFolder::discardSlot(path); });
    else if (!done)
        IncomingFolder::discardSlot(slot.value);
    return done;
}

Outcome FolderStore::fillSlot(const QString &localPath, const QString &slot, const QString &owner,
                              Progress &progress) const
{
    Result<FileHandle> source = FileHandle::openForReading(localPath);
    if (!source)
        return source.outcome;
    const auto before = source.value.stamp();
    if (!before)
        return before.outcome;
    progress.setTotal(before.value.size);
    Result<FileHandle> body = FileHandle::createNew(slot + QStringLiteral("/body"));
    if (!body)
        return body.outcome;
    const Result<StreamSums> sums = copyInto(body.value, source.value, progress);
    if (!sums)
        return sums.outcome;
    const auto after = source.value.stamp();
    if (!after || !(after.value == before.value) || sums.value.size != before.value.size)
        return changedFailure(localPath);
    for (const Outcome &step : {body.value.makeReadOnly(), body.value.sync(), body.value.close()})
        if (!step)
            return step;
    const QString named =
        slot + QLatin1Char('/') + StoredEntry::bodyName(sums.value.sha256, sums.value.size, owner);
    std::error_code error;
    Disk::rename(fsPath(body.value.path()), fsPath(named), error);
    if (error)
        return ioFailure("rename", named, error.value());
    return syncFolder(slot);
}

Outcome FolderStore::publishSlot(const QString &slot, const QString &name) const
{
    const QString fan = m_layout.fan(name);
    if (Outcome made = makeFolder(fan); !made)
        return made;
    const QString target = m_layout.entry(name);
    std::error_code error;
    Disk::rename(fsPath(slot), fsPath(target), error);
    if (error)
        return isTaken(error.value()) ? takenFailure(name)
                                      : ioFailure("rename", target, error.value());
    Outcome synced = syncFolder(fan);
    if (!synced)
        Disk::rename(fsPath(target), fsPath(slot), error);
    return synced;
}

Outcome FolderStore::get(const QString &name, const QString &localPath, Progress &progress) const
{
    Result<LocalTarget> target = LocalTarget::create(localPath);
    if (!target)
        return target.outcome;
    const Result<StoredEntry> stored = entry(name);
    if (!stored)
        return stored.outcome;
    progress.setTotal(stored.value.info.size);
    Result<FileHandle> body = FileHandle::openForReading(stored.value.bodyPath);
    if (!body)
        return body.outcome;
    const Result<StreamSums> sums = copyInto(target.value.file(), body.value, progress);
    if (!sums)
        return sums.outcome;
    if (Outcome same = compareSums(stored.value.info, sums.value); !same)
        return same;
    return target.value.publish();
}

Outcome FolderStore::remove(const QString &name)
{
    const Result<StoredEntry> stored = entry(name);
    if (!stored)
        return stored.outcome;
    if (Outcome made = makeFolder(m_layout.trash()); !made)
        return made;
    const QString trashed =
        m_layout.trash() + QLatin1Char('/') + name + QLatin1Char('@') + FolderLayout::newId();
    std::error_code error;
    moveEntry(m_layout.entry(name), stored.value.bodyPath, trashed, error);
    if (error)
        return ioFailure("remove", name, error.value());
    if (!hasLiveHold(m_layout))
        IncomingFolder::discardSlot(trashed);
    return syncFolder(m_layout.fan(name));
}

/// Without its place the store may be on a disk that is not mounted.
Result<bool> FolderStore::has(const QString &name) const
{
    if (!isValidStoredName(name))
        return false;
    std::error_code error;
    for (const QString &folder : {m_layout.entry(name), m_layout.place()}) {
        Disk::children(fsPath(folder), error);
        if (error != std::errc::no_such_file_or_directory)
            break;
    }
    if (error)
        return ioFailure("look for", name, error.value());
    return bool(entry(name));
}

Result<StoredFileInfo> FolderStore::find(const QString &name) const
{
    const Result<StoredEntry> stored = entry(name);
    if (!stored)
        return stored.outcome;
    return stored.value.info;
}

Result<QVector<StoredFileInfo>> FolderStore::list() const
{
    QVector<StoredFileInfo> found;
    const QDir files(m_layout.files());
    for (const QString &fan : files.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QDir folder(files.filePath(fan));
        for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const Result<StoredEntry> stored = entry(name);
            if (stored)
                found.append(stored.value.info);
        }
    }
    std::sort(found.begin(), found.end(),
              [](const auto &a, const auto &b) { return a.name < b.name; });
    return found;
}

Outcome FolderStore::verify(const QString &name, Progress &progress) const
{
    const Result<StoredEntry> stored = entry(name);
    if (!stored)
        return stored.outcome;
    Result<FileHandle> body = FileHandle::openForReading(stored.value.bodyPath);
    if (!body)
        return body.outcome;
    const Result<StreamSums> sums = streamHashed(body.value, {}, progress);
    if (!sums)
        return sums.outcome;
    return compareSums(stored.value.info, sums.value);
}

Result<std::unique_ptr<StoreHold>> FolderStore::hold()
{
    return FolderHold::create(m_layout);
}

bool FolderStore::isPutterAlive(const QString &name) const
{
    const Result<StoredEntry> stored = entry(name);
    return stored && FileLock::isAlive(m_layout.ownerLock(stored.value.owner));
}

Result<QStringList> FolderStore::leftovers() const
{
    const FolderSweeper sweeper(m_layout);
    QStringList found = sweeper.deadIncoming() + sweeper.freeTrash() + sweeper.foreign();
    const QDir place(m_layout.place());
    for (QString &path : found)
        path = place.relativeFilePath(path);
    found.sort();
    return found;
}

Outcome FolderStore::sweep()
{
    return FolderSweeper(m_layout).sweep();
}

QString FolderStore::placeText() const
{
    return FolderStoreTexts::place(m_layout.place());
}

} // namespace KODMS::Services
