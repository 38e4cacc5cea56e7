// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace KODMS::Services {

/// Writes many small files side by side: making a file costs more than filling it,
/// and the system makes several at a time. Used from one thread.
class FileWriters {
public:
    FileWriters() = default;
    /// Drops what is not written yet.
    ~FileWriters();
    FileWriters(const FileWriters &) = delete;
    FileWriters &operator=(const FileWriters &) = delete;

    /// A new file with that content, written some time. Its folder is there and no
    /// other file of that path is under way. Reports what went wrong before.
    Outcome add(const QString &path, std::vector<char> content);
    /// Returns when everything is written.
    Outcome drain();

private:
    struct Job {
        QString path;
        std::vector<char> content;
    };

    void start();
    void run();
    static Outcome write(const Job &job);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    std::size_t m_waitingBytes = 0; ///< of the jobs that nobody has taken
    std::size_t m_unfinished = 0;
    bool m_isEnding = false;
    Outcome m_failure; ///< the first one
    std::vector<std::thread> m_threads;
};

} // namespace KODMS::Services
