// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsReader.h"

#include "services/disk/BoundedQueue.h"
#include "services/disk/IoFailure.h"
#include "services/disk/RunAside.h"
#include "services/disk/Sha256.h"
#include "services/filestore/HashedStream.h"
#include "services/filestore/gridfs/GridFsPlace.h"
#include "services/notices/NoticeHub.h"

#include <thread>

namespace KODMS::Services {

namespace {

/// Of content in one answer of the server. Left to itself a server may fill its largest
/// message, which takes seconds on a slow line, and memory, or exceed it. Each answer costs a
/// journey there and back, and on a busy machine twice the wait for a processor.
constexpr qint64 BytesAtOnce = 8 << 20;
constexpr std::chrono::milliseconds LookForCancel(50);

qint64 chunksAtOnce(const GridFsFile &file)
{
    return qMax<qint64>(1, BytesAtOnce / file.chunkSize);
}

/// What the fetching thread and the reading one share; it lives as long as either.
struct Feed {
    Feed(std::shared_ptr<GridFsServer> from, GridFsFile what)
        : server(std::move(from)), file(std::move(what)),
          chunks(static_cast<std::size_t>(chunksAtOnce(file)))
    {
    }

    const std::shared_ptr<GridFsServer> server;
    const GridFsFile file;
    BoundedQueue<std::vector<char>> chunks; ///< a whole answer, while the next one is asked for
    Outcome outcome;
};

Outcome damaged(const GridFsFile &file, const QString &cause)
{
    Outcome failure = compareSums(file.info(), {-1, {}});
    failure.cause = cause;
    return failure;
}

/// Takes the chunks as they come and refuses the first that is not the next.
class ChunkRow {
public:
    explicit ChunkRow(Feed &feed) : m_feed(feed) {}

    bool take(const BsonView &chunk)
    {
        const qint64 number = chunk.number("n");
        const BsonView::Bytes data = chunk.bytes("data");
        const qint64 expected = m_feed.file.sizeOfChunk(m_next);
        // Of an empty file some clients make an empty chunk.
        const bool isRight =
            number == m_next && data.size == expected && (expected > 0 || m_next == 0);
        if (!isRight) {
            m_outcome = damaged(m_feed.file, QStringLiteral("chunk %1 of %2 bytes stands where "
                                                            "chunk %3 of %4 bytes should")
                                                 .arg(number)
                                                 .arg(data.size)
                                                 .arg(m_next)
                                                 .arg(expected));
            return false;
        }
        ++m_next;
        return m_feed.chunks.push({data.data, data.data + data.size});
    }

    Outcome end() const
    {
        if (m_outcome && m_feed.file.sizeOfChunk(m_next) > 0)
            return damaged(m_feed.file, QStringLiteral("chunk %1 is missing").arg(m_next));
        return m_outcome;
    }

private:
    Feed &m_feed;
    qint64 m_next = 0;
    Outcome m_outcome;
};

void fetch(Feed &feed)
{
    ChunkRow row(feed);
    Bson options;
    options.document("sort", Bson().small("n", 1))
        .document("projection", Bson().small("_id", 0).small("n", 1).small("data", 1))
        .number("batchSize", chunksAtOnce(feed.file));
    const Outcome found =
        GridFsPlace(feed.server)
            .each(GridFsPlace::Chunks, Bson().id("files_id", feed.file.id), options,
                  [&row](const BsonView &chunk) { return row.take(chunk); });
    feed.outcome = found ? row.end() : found;
    feed.chunks.finish();
}

/// The thread that fetches. When reading ends early it is left to find that out by
/// itself: it may be waiting for a server that does not answer.
class Fetching {
public:
    explicit Fetching(const std::shared_ptr<Feed> &feed)
        : m_feed(feed), m_thread([feed] { fetch(*feed); })
    {
    }

    ~Fetching()
    {
        m_feed->chunks.close();
        runAside([thread = std::make_shared<std::thread>(std::move(m_thread))] { thread->join(); });
    }

    Fetching(const Fetching &) = delete;
    Fetching &operator=(const Fetching &) = delete;

private:
    const std::shared_ptr<Feed> m_feed;
    std::thread m_thread;
};

Result<StreamSums> stream(const std::shared_ptr<Feed> &feed, const ByteSink &sink,
                          Progress &progress)
{
    const Fetching fetching(feed);
    Sha256 hash;
    StreamSums sums;
    for (;;) {
        if (progress.isCancelled())
            return cancelledFailure();
        const auto next = feed->chunks.popWithin(LookForCancel);
        if (next.isOver)
            break;
        if (!next.item)
            continue;
        const auto size = static_cast<qint64>(next.item->size());
        hash.add(next.item->data(), size);
        if (Outcome taken = sink ? sink(next.item->data(), size) : Outcome::success(); !taken)
            return taken;
        sums.size += size;
        progress.advance(size);
    }
    if (!feed->outcome)
        return feed->outcome;
    sums.sha256 = hash.finish();
    return sums;
}

} // namespace

Outcome readGridFsFile(const std::shared_ptr<GridFsServer> &server, const GridFsFile &file,
                       const ByteSink &sink, Progress &progress)
{
    const auto sums = stream(std::make_shared<Feed>(server, file), sink, progress);
    if (!sums)
        return sums.outcome;
    if (file.isOurs())
        return compareSums(file.info(), sums.value);
    qCInfo(lcFileStore).noquote() << "no SHA-256 recorded, only the length compared:" << file.name;
    return Outcome::success();
}

Result<QByteArray> digestOfGridFsFile(const std::shared_ptr<GridFsServer> &server,
                                      const GridFsFile &file, Progress &progress)
{
    const auto sums = stream(std::make_shared<Feed>(server, file), {}, progress);
    if (!sums)
        return sums.outcome;
    return sums.value.sha256;
}

} // namespace KODMS::Services
