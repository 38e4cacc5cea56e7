// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace KODMS::Services {

/// Hands things from one thread to another in order, a few at a time: who is ahead
/// waits. Every call may come from any thread.
template <typename T> class BoundedQueue {
public:
    explicit BoundedQueue(std::size_t limit) : m_limit(limit) {}

    /// Waits while the queue is full; false, and the item is dropped, once closed.
    bool push(T item)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isClosed || m_items.size() < m_limit; });
        if (m_isClosed)
            return false;
        m_items.push_back(std::move(item));
        lock.unlock();
        m_changed.notify_all();
        return true;
    }

    /// Waits for an item; nothing after the last one, or once closed.
    std::optional<T> pop()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isClosed || m_isFinished || !m_items.empty(); });
        if (m_isClosed || m_items.empty())
            return std::nullopt;
        std::optional<T> item(std::move(m_items.front()));
        m_items.pop_front();
        lock.unlock();
        m_changed.notify_all();
        return item;
    }

    /// The same for who has other things to look after: waits no longer than `limit`.
    /// The item stays with the caller while there is no room.
    enum class Pushed { Yes, NoRoom, Closed };

    Pushed pushWithin(std::chrono::milliseconds limit, T &item)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const auto hasRoom = [this] { return m_isClosed || m_items.size() < m_limit; };
        if (!m_changed.wait_for(lock, limit, hasRoom))
            return Pushed::NoRoom;
        if (m_isClosed)
            return Pushed::Closed;
        m_items.push_back(std::move(item));
        lock.unlock();
        m_changed.notify_all();
        return Pushed::Yes;
    }

    /// pop() that waits no longer than `limit`: without an item and not over, ask again.
    struct Popped {
        std::optional<T> item;
        bool isOver = false;
    };

    Popped popWithin(std::chrono::milliseconds limit)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const auto hasNews = [this] { return m_isClosed || m_isFinished || !m_items.empty(); };
        if (!m_changed.wait_for(lock, limit, hasNews))
            return {};
        if (m_isClosed || m_items.empty())
            return {std::nullopt, true};
        Popped popped{std::move(m_items.front()), false};
        m_items.pop_front();
        lock.unlock();
        m_changed.notify_all();
        return popped;
    }

    /// Nothing more will be pushed; what is there is still popped.
    void finish() { end(m_isFinished); }

    /// Nobody wants any of it any more: both sides stop waiting.
    void close() { end(m_isClosed); }

private:
    void end(bool &flag)
    {
        {
            const std::lock_guard<std::mutex> guard(m_mutex);
            flag = true;
        }
        m_changed.notify_all();
    }

    const std::size_t m_limit;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<T> m_items;
    bool m_isFinished = false;
    bool m_isClosed = false;
};

} // namespace KODMS::Services
