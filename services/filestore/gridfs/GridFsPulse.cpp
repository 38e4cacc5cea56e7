// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsPulse.h"

#include "services/filestore/FolderLayout.h"
#include "services/notices/NoticeHub.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <chrono>

namespace KODMS::Services {

GridFsPulse::GridFsPulse(std::shared_ptr<GridFsServer> server, Kind kind)
    : m_server(std::move(server)), m_id(FolderLayout::newId()), m_kind(kind)
{
}

Result<std::unique_ptr<GridFsPulse>> GridFsPulse::begin(const std::shared_ptr<GridFsServer> &server,
                                                        Kind kind)
{
    // A question is asked again on a new connection when the server was restarted; a change is not.
    if (const auto reached = GridFsPlace(server).now(); !reached)
        return reached.outcome;
    std::unique_ptr<GridFsPulse> pulse(new GridFsPulse(server, kind));
    if (Outcome heard = pulse->beat(); !heard)
        return heard;
    pulse->m_thread = std::thread([raw = pulse.get()] { raw->run(); });
    return pulse;
}

GridFsPulse::~GridFsPulse()
{
    if (m_thread.joinable()) {
        {
            const std::lock_guard<std::mutex> guard(m_mutex);
            m_isEnding = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }
    if (!m_isHeard)
        return; // a lost server shall not keep a program from ending
    const auto ended = GridFsPlace(m_server).remove(GridFsPlace::Live, Bson().text("_id", m_id));
    if (!ended)
        qCDebug(lcFileStore).noquote() << "end of a pulse:" << ended.outcome.cause;
}

QString GridFsPulse::textOf(Kind kind)
{
    return kind == Kind::Owner ? QStringLiteral("owner") : QStringLiteral("hold");
}

Bson GridFsPulse::seenNow()
{
    Bson change;
    change.document("$currentDate", Bson().flag("seen", true));
    return change;
}

Outcome GridFsPulse::beat()
{
    QStringList puts;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        puts = m_puts;
    }
    Bson change = seenNow();
    change.document("$set", Bson()
                                .text("kind", textOf(m_kind))
                                .text("host", QSysInfo::machineHostName())
                                .number("process", QCoreApplication::applicationPid()));
    const GridFsPlace place(m_server);
    const auto lives = place.updateOrInsert(GridFsPlace::Live, Bson().text("_id", m_id), change);
    m_isHeard = bool(lives);
    if (!lives || puts.isEmpty())
        return lives.outcome;
    const auto kept = place.update(
        GridFsPlace::Puts, Bson().document("_id", Bson().texts("$in", puts)).text("owner", m_id),
        seenNow());
    return kept.outcome;
}

void GridFsPulse::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto isEnding = [this] { return m_isEnding; };
    while (!m_changed.wait_for(lock, std::chrono::milliseconds(BeatMs), isEnding)) {
        lock.unlock();
        if (const Outcome heard = beat(); !heard)
            qCInfo(lcFileStore).noquote() << "sign of life:" << heard.cause;
        lock.lock();
    }
}

void GridFsPulse::addPut(const QString &name)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_puts << name;
}

void GridFsPulse::removePut(const QString &name)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_puts.removeOne(name);
}

} // namespace KODMS::Services
