// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsSender.h"

#include "services/disk/IoFailure.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr std::size_t Threads = 2;
constexpr std::size_t Waiting = 2;
constexpr std::chrono::milliseconds LookForCancel(50);

} // namespace

GridFsSender::GridFsSender(const std::shared_ptr<GridFsServer> &server, const GridFsId &id)
    : m_server(server), m_id(id), m_queue(Waiting), m_running(Threads)
{
    for (std::size_t i = 0; i < Threads; ++i)
        m_threads.emplace_back([this] { run(); });
}

GridFsSender::~GridFsSender()
{
    m_queue.close();
    for (std::thread &thread : m_threads)
        thread.join();
}

void GridFsSender::run()
{
    Outcome done = Outcome::success();
    {
        const GridFsPlace place(m_server);
        while (const auto batch = m_queue.pop()) {
            done = sendOne(place, *batch);
            if (!done)
                break;
        }
    }
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (!done && m_failure.ok) {
        m_failure = done;
        m_queue.close();
    }
    --m_running;
    m_changed.notify_all();
}

Outcome GridFsSender::sendOne(const GridFsPlace &place, const Batch &batch) const
{
    std::vector<Bson> documents;
    const auto size = static_cast<qint64>(batch.bytes.size());
    for (qint64 start = 0; start < size; start += ChunkSize) {
        documents.emplace_back();
        documents.back()
            .id("files_id", m_id)
            .small("n", static_cast<int>(batch.firstChunk + start / ChunkSize))
            .bytes("data", batch.bytes.data() + start, std::min(ChunkSize, size - start));
    }
    return place.insert(GridFsPlace::Chunks, documents);
}

Outcome GridFsSender::failure()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_failure;
}

Outcome GridFsSender::send(Batch batch, const Progress &progress)
{
    using Pushed = BoundedQueue<Batch>::Pushed;
    for (;;) {
        if (progress.isCancelled())
            return cancelledFailure();
        const Pushed pushed = m_queue.pushWithin(LookForCancel, batch);
        if (pushed != Pushed::NoRoom)
            return pushed == Pushed::Yes ? Outcome::success() : failure();
    }
}

Outcome GridFsSender::finish(const Progress &progress)
{
    m_queue.finish();
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_changed.wait_for(lock, LookForCancel, [this] { return m_running == 0; }))
        if (progress.isCancelled())
            return cancelledFailure();
    return m_failure;
}

} // namespace KODMS::Services
