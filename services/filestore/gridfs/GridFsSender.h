// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/BoundedQueue.h"
#include "services/filestore/gridfs/GridFsFile.h"
#include "services/filestore/gridfs/GridFsPlace.h"
#include "services/notices/Progress.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace KODMS::Services {

/// Sends the contents of one file in threads of its own, while the caller reads and
/// hashes what comes next. The caller never waits for the network longer than it takes
/// to notice that somebody has pressed cancel.
class GridFsSender {
public:
    /// Some chunks in a row, the last of which may be short.
    struct Batch {
        qint64 firstChunk = 0;
        std::vector<char> bytes;
    };

    /// 255 KiB, as every GridFS client takes by default.
    static constexpr qint64 ChunkSize = 255 * 1024;
    /// One message: large enough to make up for the wait for the majority, small enough
    /// to be told apart on a bar of progress.
    static constexpr qint64 BatchSize = 4 * ChunkSize;

    GridFsSender(const std::shared_ptr<GridFsServer> &server, const GridFsId &id);
    /// Drops what has not been sent, and waits for what is on its way.
    ~GridFsSender();
    GridFsSender(const GridFsSender &) = delete;
    GridFsSender &operator=(const GridFsSender &) = delete;

    Outcome send(Batch batch, const Progress &progress);
    /// Everything has arrived when this succeeds.
    Outcome finish(const Progress &progress);

private:
    void run();
    Outcome sendOne(const GridFsPlace &place, const Batch &batch) const;
    Outcome failure();

    const std::shared_ptr<GridFsServer> m_server;
    const GridFsId m_id;
    BoundedQueue<Batch> m_queue;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    Outcome m_failure;
    std::size_t m_running = 0;
    std::vector<std::thread> m_threads;
};

} // namespace KODMS::Services
