// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/LiveChanges.h"

#include "foundation/ui/DMS_UICommon.h"
#include "services/api/internal/ServerProbe.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Dialect.h"
#include "services/session/Runtime.h"
#include "services/session/SessionSignals.h"
#include "services/tasks/TaskRunner.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr int longestInterval = 60'000;
constexpr int gathering = 100; // one look for a burst of changes

} // namespace

LiveChanges::LiveChanges() : m_probe(std::make_unique<ServerProbe>())
{
    m_timer.setInterval(m_interval);
    m_told.setSingleShot(true);
    m_told.setInterval(gathering);
    connect(&m_timer, &QTimer::timeout, this, &LiveChanges::look);
    connect(&m_told, &QTimer::timeout, this, &LiveChanges::look);
    connect(m_probe.get(), &ServerProbe::answered, this, &LiveChanges::lookNow);
    connect(&SessionSignals::instance(), &SessionSignals::actorChanged, this, &LiveChanges::end);
    // The first of the two signals of a refresh: no desk has read yet.
    connect(UI::DMS_UICommon::interface(), &UI::DMS_UICommon::refreshOrigFileTable, this,
            &LiveChanges::startAgain);
    connect(&NoticeHub::instance(), &NoticeHub::raised, this, &LiveChanges::heard);
}

LiveChanges::~LiveChanges() = default;

LiveChanges &LiveChanges::instance()
{
    static LiveChanges changes;
    return changes;
}

bool LiveChanges::isWorking()
{
    return TaskRunner::instance().isBusy();
}

void LiveChanges::begin()
{
    if (Runtime::current() == nullptr)
        return;
    m_isOn = true;
    lookBy([this](ForeignChanges &changes) {
        listen();
        changes.begin();
    });
}

/// Also after the connection was made anew. What nobody sees waits until somebody does.
void LiveChanges::listen()
{
    const bool isTold =
        Runtime::current()->records().database().dialect().listen([this] { lookSoon(); });
    m_interval = isTold ? m_intervalWhenTold : Interval;
    m_timer.setInterval(m_interval);
}

void LiveChanges::startAgain()
{
    if (m_isOn)
        begin();
}

void LiveChanges::end()
{
    m_isOn = false;
    m_timer.stop();
    m_told.stop();
    if (Runtime *runtime = Runtime::current()) {
        runtime->records().database().dialect().listen({});
        runtime->foreignChanges().end();
    }
    show(0);
}

void LiveChanges::setWatched(bool watched)
{
    if (watched == isWatched())
        return;
    if (!watched) {
        m_timer.stop();
        return;
    }
    m_timer.start();
    look();
}

/// Not in the middle of a change: what is read there may yet be undone.
bool LiveChanges::mayLook() const
{
    Runtime *runtime = Runtime::current();
    return m_isOn && runtime != nullptr && !runtime->records().database().isInTransaction();
}

void LiveChanges::lookSoon()
{
    if (isWatched() && !m_told.isActive())
        m_told.start();
}

/// It may come of a database that is away: a look tells.
void LiveChanges::heard(int level)
{
    if (!m_isOn || level != static_cast<int>(NoticeLevel::Error))
        return;
    m_wasErrorTold = true;
    lookSoon();
}

void LiveChanges::look()
{
    if (!mayLook())
        return;
    if (m_hasFailed)
        m_timer.setInterval(std::min(m_timer.interval() * 2, longestInterval));
    Database &database = Runtime::current()->records().database();
    if (m_hasFailed && database.dialect().isServer())
        m_probe->ask(database.settings().host, database.settings().port);
    else
        lookNow();
}

/// Nobody has asked for anything who would want to wait: a lost connection is made anew by the
/// next action, or here, when the server takes connections again.
void LiveChanges::lookNow()
{
    if (!mayLook())
        return;
    Database &database = Runtime::current()->records().database();
    database.setReopening(m_hasFailed ? Database::Reopening::Once : Database::Reopening::Never);
    const auto patientAgain =
        qScopeGuard([&database] { database.setReopening(Database::Reopening::Patient); });
    lookBy([](ForeignChanges &changes) {
        if (changes.isCounting())
            changes.look();
        else
            changes.begin();
    });
}

void LiveChanges::lookBy(const std::function<void(ForeignChanges &)> &step)
{
    ForeignChanges &changes = Runtime::current()->foreignChanges();
    try {
        step(changes);
        succeeded();
    } catch (const SqlError &error) {
        failed(error.logText());
    }
    show(changes.count());
}

/// An error that was told would otherwise be the last that people hear of it.
void LiveChanges::succeeded()
{
    const bool wasErrorTold = std::exchange(m_wasErrorTold, false);
    if (!m_hasFailed)
        return;
    m_hasFailed = false;
    m_timer.setInterval(m_interval);
    qCInfo(lcRecords) << "look for changes by others: works again";
    if (wasErrorTold)
        NoticeHub::instance().raise(NoticeLevel::Information, tr("数据库恢复可用"));
    Q_EMIT failedChanged(false);
}

void LiveChanges::failed(const QString &cause)
{
    if (m_hasFailed)
        return;
    qCWarning(lcRecords).noquote() << "look for changes by others" << cause;
    m_hasFailed = true;
    m_timer.setInterval(Interval);
    Q_EMIT failedChanged(true);
}

void LiveChanges::show(int count)
{
    if (count == m_count)
        return;
    m_count = count;
    Q_EMIT countChanged(count);
}

} // namespace KODMS::Services
