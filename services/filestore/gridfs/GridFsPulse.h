// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsPlace.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace KODMS::Services {

/// Says every quarter of a minute, by the server's clock, that this program lives, and
/// that the puts it has begun go on. Who has not been heard of for two minutes is gone:
/// it was killed, or its machine was, and what it began may be swept.
class GridFsPulse {
public:
    static constexpr qint64 BeatMs = 15000;
    static constexpr qint64 GoneMs = 120000;

    enum class Kind { Owner, Hold };

    /// Fails when the server cannot be told.
    static Result<std::unique_ptr<GridFsPulse>> begin(const std::shared_ptr<GridFsServer> &server,
                                                      Kind kind);
    /// Takes the sign of life back.
    ~GridFsPulse();
    GridFsPulse(const GridFsPulse &) = delete;
    GridFsPulse &operator=(const GridFsPulse &) = delete;

    const QString &id() const { return m_id; }

    /// The server took the last sign of life. Any thread.
    bool isHeard() const { return m_isHeard; }

    /// While a put goes on, its document in BUCKET.kodms.puts is kept fresh.
    void addPut(const QString &name);
    void removePut(const QString &name);

    static QString textOf(Kind kind);
    /// `{$currentDate: {seen: true}}`: now, by the server's clock.
    static Bson seenNow();

private:
    GridFsPulse(std::shared_ptr<GridFsServer> server, Kind kind);
    void run();
    Outcome beat();

    const std::shared_ptr<GridFsServer> m_server;
    const QString m_id;
    const Kind m_kind;
    std::atomic<bool> m_isHeard{false};
    bool m_isEnding = false;
    QStringList m_puts;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread m_thread;
};

} // namespace KODMS::Services
