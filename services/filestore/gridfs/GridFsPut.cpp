// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsPut.h"

#include "services/disk/FileHandle.h"
#include "services/disk/RunAside.h"
#include "services/disk/Sha256.h"
#include "services/filestore/HashedStream.h"
#include "services/filestore/StoreFailures.h"
#include "services/filestore/gridfs/GridFsRemoval.h"
#include "services/filestore/gridfs/GridFsSweeper.h"
#include "services/notices/NoticeHub.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

struct GridFsPutTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::GridFsStore)

public:
    static Outcome beingPut(const QString &name)
    {
        return Outcome::failure(
            tr("另一个程序正在存入此文件，或在存入时被终止（两分钟后可再试）：%1").arg(name),
            QStringLiteral("being put: %1").arg(name));
    }

    static Outcome takenForDead(const QString &name)
    {
        return Outcome::failure(tr("存入时间断过久，已被清理，请再试：%1").arg(name),
                                QStringLiteral("swept while it was put: %1").arg(name));
    }

    static Outcome tooLarge(const QString &path)
    {
        return Outcome::failure(tr("文件过大，无法存入文件服务器：%1").arg(path),
                                QStringLiteral("more chunks than can be counted: %1").arg(path));
    }
};

/// Everything that a put may have left, the stored file first.
Outcome clearAway(const std::shared_ptr<GridFsServer> &server, const GridFsFile &file)
{
    const GridFsPlace place(server);
    const auto unpublished = place.remove(GridFsPlace::Files, Bson().id("_id", file.id));
    if (!unpublished)
        return unpublished.outcome;
    if (Outcome removed = GridFsRemoval(place).removeChunks(file.id); !removed)
        return removed;
    return place.remove(GridFsPlace::Puts, Bson().text("_id", file.name).id("file", file.id))
        .outcome;
}

/// As much of `source` as one message takes; less only at its end.
Result<std::vector<char>> nextBytes(FileHandle &source)
{
    std::vector<char> bytes(GridFsSender::BatchSize);
    qint64 filled = 0;
    while (filled < GridFsSender::BatchSize) {
        const auto got = source.read(bytes.data() + filled, GridFsSender::BatchSize - filled);
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        filled += got.value;
    }
    bytes.resize(static_cast<std::size_t>(filled));
    return bytes;
}

} // namespace

GridFsPut::GridFsPut(std::shared_ptr<GridFsServer> server, GridFsPulse &pulse, const QString &name)
    : m_server(std::move(server)), m_pulse(pulse), m_place(m_server)
{
    m_file.id = GridFsId::newId();
    m_file.name = name;
    m_file.chunkSize = GridFsSender::ChunkSize;
    m_file.owner = pulse.id();
}

GridFsPut::~GridFsPut()
{
    m_pulse.removePut(m_file.name);
}

QString GridFsPut::openState()
{
    return QStringLiteral("open");
}

QString GridFsPut::brokenState()
{
    return QStringLiteral("broken");
}

Outcome GridFsPut::run(const QString &localPath, Progress &progress)
{
    if (Outcome taken = refuseTaken(); !taken)
        return taken;
    if (Outcome reserved = reserve(); !reserved)
        return reserved;
    Outcome done = refuseTaken(); // now that nobody else can begin
    if (done)
        done = m_place.makeIndexes();
    if (done)
        done = fill(localPath, progress);
    if (done)
        done = publish();
    if (!done)
        takeBack(progress.isCancelled());
    return done;
}

Outcome GridFsPut::refuseTaken() const
{
    const auto isThere = GridFsCatalog(m_place).has(m_file.name);
    if (!isThere)
        return isThere.outcome;
    return isThere.value ? takenFailure(m_file.name) : Outcome::success();
}

/// What a killed program left must not keep the name until somebody opens the store anew.
Outcome GridFsPut::reserve()
{
    auto reserved = tryReserve();
    if (reserved && !reserved.value) {
        if (Outcome swept = GridFsSweeper(m_place).sweepPut(m_file.name); !swept)
            return swept;
        reserved = tryReserve();
    }
    if (!reserved)
        return reserved.outcome;
    if (!reserved.value)
        return GridFsPutTexts::beingPut(m_file.name);
    m_pulse.addPut(m_file.name);
    return Outcome::success();
}

Result<bool> GridFsPut::tryReserve() const
{
    Bson change = GridFsPulse::seenNow();
    change.document("$set", Bson().text("owner", m_file.owner).text("state", openState()));
    return m_place.updateOrInsert(GridFsPlace::Puts,
                                  Bson().text("_id", m_file.name).id("file", m_file.id), change);
}

Outcome GridFsPut::fill(const QString &localPath, Progress &progress)
{
    Result<FileHandle> source = FileHandle::openForReading(localPath);
    if (!source)
        return source.outcome;
    const auto before = source.value.stamp();
    if (!before)
        return before.outcome;
    if (before.value.size / GridFsSender::ChunkSize >= std::numeric_limits<int>::max())
        return GridFsPutTexts::tooLarge(localPath);
    progress.setTotal(before.value.size);
    m_sender = std::make_shared<GridFsSender>(m_server, m_file.id);
    Sha256 hash;
    for (;;) {
        auto bytes = nextBytes(source.value);
        if (!bytes)
            return bytes.outcome;
        const auto size = static_cast<qint64>(bytes.value.size());
        if (size == 0)
            break;
        hash.add(bytes.value.data(), size);
        GridFsSender::Batch batch{m_file.size / GridFsSender::ChunkSize, std::move(bytes.value)};
        if (Outcome sent = m_sender->send(std::move(batch), progress); !sent)
            return sent;
        m_file.size += size;
        progress.advance(size);
    }
    m_file.sha256 = hash.finish();
    const auto after = source.value.stamp();
    if (!after || !(after.value == before.value) || m_file.size != before.value.size)
        return changedFailure(localPath);
    return m_sender->finish(progress);
}

Outcome GridFsPut::publish()
{
    const auto now = m_place.now();
    if (!now)
        return now.outcome;
    if (Outcome published = m_place.insert(GridFsPlace::Files, m_file.toBson(now.value));
        !published)
        return published;
    if (Outcome same = readBack(); !same)
        return same;
    Bson mine;
    mine.text("_id", m_file.name).id("file", m_file.id).text("state", openState());
    const auto released = m_place.remove(GridFsPlace::Puts, mine);
    if (!released)
        return released.outcome;
    return released.value == 1 ? Outcome::success() : GridFsPutTexts::takenForDead(m_file.name);
}

/// What the server acknowledged is what it says that it has.
Outcome GridFsPut::readBack() const
{
    StreamSums sums;
    const Outcome read = m_place.each(GridFsPlace::Files, Bson().id("_id", m_file.id), Bson(),
                                      [&sums](const BsonView &document) {
                                          if (const auto file = GridFsFile::parse(document))
                                              sums = {file->size, file->sha256};
                                          return false;
                                      });
    return read ? compareSums(m_file.info(), sums) : read;
}

/// Only when nothing more is on its way. A person who has cancelled does not wait for it.
void GridFsPut::takeBack(bool isCancelled)
{
    auto work = [server = m_server, file = m_file, sender = std::move(m_sender)]() mutable {
        sender.reset();
        if (const Outcome cleared = clearAway(server, file); !cleared)
            qCInfo(lcFileStore).noquote() << "left for the next sweep:" << cleared.cause;
    };
    if (isCancelled)
        runAside(std::move(work));
    else
        work();
}

} // namespace KODMS::Services
