// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/search/IndexData.h"

#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace KODMS::Services {

/// Reads an index on a thread of its own, through a connection of its own. Its
/// functions are for one thread.
class IndexLoader {
public:
    struct Loaded {
        /// Null after a failure; what was known after one that passes.
        std::unique_ptr<IndexData> data;
        double milliseconds = 0;
        QString problem;        ///< for the log
        bool isPassing = false; ///< of the problem: the same may succeed later
    };

    IndexLoader(const DatabaseSettings &settings, int segmentRows);
    /// Stops what is being read, and waits for the thread.
    ~IndexLoader();

    IndexLoader(const IndexLoader &) = delete;
    IndexLoader &operator=(const IndexLoader &) = delete;

    /// Not while one is being read. Only what has changed since is read into `known`, when
    /// there is one and the log of changes tells it.
    void start(std::unique_ptr<IndexData> known = nullptr);

    /// From start() until the result was taken.
    bool isBusy() const { return m_thread.joinable(); }

    /// The result, once, when it is there.
    std::optional<Loaded> take();

    /// Until the result is there; without effect when nothing is being read.
    void wait();

private:
    void run(std::unique_ptr<IndexData> known);
    Loaded load(std::unique_ptr<IndexData> known) const;

    DatabaseSettings m_settings;
    int m_segmentRows;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::mutex m_mutex;
    std::condition_variable m_finished;
    std::optional<Loaded> m_loaded; ///< under the mutex
};

} // namespace KODMS::Services
