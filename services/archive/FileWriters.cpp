// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FileWriters.h"

#include "services/disk/FileHandle.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr unsigned MaxThreads = 4;
constexpr std::size_t MaxJobs = 256;
constexpr std::size_t MaxBytes = std::size_t{8} << 20;

} // namespace

FileWriters::~FileWriters()
{
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_isEnding = true;
        m_jobs.clear();
    }
    m_changed.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

void FileWriters::start()
{
    const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, MaxThreads);
    for (unsigned i = 0; i < count; ++i)
        m_threads.emplace_back([this] { run(); });
}

Outcome FileWriters::add(const QString &path, std::vector<char> content)
{
    if (m_threads.empty())
        start();
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] {
        return !m_failure || (m_jobs.size() < MaxJobs && m_waitingBytes < MaxBytes);
    });
    if (!m_failure)
        return m_failure;
    m_waitingBytes += content.size();
    ++m_unfinished;
    m_jobs.push_back({path, std::move(content)});
    lock.unlock();
    m_changed.notify_all();
    return Outcome::success();
}

Outcome FileWriters::drain()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_failure || m_unfinished == 0; });
    return m_failure;
}

void FileWriters::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isEnding || !m_jobs.empty(); });
        if (m_isEnding)
            return;
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        m_waitingBytes -= job.content.size();
        const bool isGoodSoFar = m_failure.ok;
        lock.unlock();
        Outcome written = isGoodSoFar ? write(job) : Outcome::success();
        lock.lock();
        --m_unfinished;
        if (!written && m_failure)
            m_failure = std::move(written);
        m_changed.notify_all();
    }
}

Outcome FileWriters::write(const Job &job)
{
    Result<FileHandle> file = FileHandle::createNew(job.path);
    if (!file)
        return file.outcome;
    const Outcome written =
        file.value.write(job.content.data(), static_cast<qint64>(job.content.size()));
    return written ? file.value.close() : written;
}

} // namespace KODMS::Services
