// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/JobDesk.h"

#include "apps/robot/ResultFolder.h"
#include "apps/robot/RobotLog.h"

#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>

namespace KODMS::Robot {

using Services::Outcome;
using Services::RobotJob;
using Services::RobotWork;

namespace {

constexpr int FirstWaitMs = 1000;
constexpr int LongestWaitMs = 60000;

void say(const RobotJob &job, const QString &what)
{
    RobotLog::write(QStringLiteral("job ") + RobotLog::quoted(job.jobName) + QStringLiteral(": ") +
                    what.simplified());
}

} // namespace

JobDesk::JobDesk(const WorkManner &manner) : m_manner(manner), m_random(manner.seed) {}

RobotAnswer JobDesk::take(const RobotRequest &request)
{
    const auto job = RobotWork::take(request.jobName);
    if (!job)
        return RobotAnswer::refused(job.text());
    begin(job.value);
    return RobotAnswer::accepted(job.value.jobName);
}

Outcome JobDesk::takeUp()
{
    const auto jobs = RobotWork::unfinished();
    if (!jobs)
        return jobs.outcome;
    for (const RobotJob &job : jobs.value) {
        say(job, QStringLiteral("taken up again"));
        begin(job);
    }
    return Outcome::success();
}

void JobDesk::begin(const RobotJob &job)
{
    const double drawn = std::uniform_real_distribution<double>(0, 1)(m_random);
    ++m_atHand;
    later({job, drawn < m_manner.failRate, FirstWaitMs}, m_manner.workMs);
}

void JobDesk::later(const Task &task, int ms)
{
    QTimer::singleShot(ms, this, [this, task] { deliver(task); });
}

void JobDesk::deliver(const Task &task)
{
    const Outcome delivered = handOver(task);
    if (!delivered) {
        retryOrDrop(task, delivered.text);
        return;
    }
    --m_atHand;
    say(task.job, task.fails ? QStringLiteral("failed, report delivered")
                             : QStringLiteral("result delivered"));
}

Outcome JobDesk::handOver(const Task &task)
{
    const QTemporaryDir place;
    if (!place.isValid())
        return Outcome::failure(place.errorString());
    const auto folder = task.fails ? ResultFolder::writeFailure(place.path(), task.job.jobName)
                                   : ResultFolder::writeJob(place.path(), task.job.jobName);
    if (!folder)
        return folder.outcome;
    Services::NoProgress progress;
    return RobotWork::deliver(task.job, folder.value, progress);
}

/// A full disk or a busy database passes; a flow that was moved on does not come back.
void JobDesk::retryOrDrop(Task task, const QString &why)
{
    if (!isWanted(task.job)) {
        --m_atHand;
        say(task.job, QStringLiteral("result dropped, ") + why);
        return;
    }
    say(task.job, QStringLiteral("not delivered, tried again: ") + why);
    const int wait = task.waitMs;
    task.waitMs = std::min(2 * wait, LongestWaitMs);
    later(task, wait);
}

/// When the records cannot be asked, the job stays.
bool JobDesk::isWanted(const RobotJob &job)
{
    const auto jobs = RobotWork::unfinished();
    return !jobs || std::any_of(jobs.value.begin(), jobs.value.end(), [&job](const RobotJob &one) {
        return one.flowId == job.flowId && one.stateVersion == job.stateVersion;
    });
}

} // namespace KODMS::Robot
