// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/RobotWork.h"

#include "services/api/internal/IntakeFile.h"
#include "services/records/Guid.h"
#include "services/records/bll/RobotChanges.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/session/Runtime.h"
#include "services/session/TakeBack.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

RobotJob jobOf(const RobotRun &run)
{
    return {run.flowId, run.stateVersion, run.flowGuid, run.jobName};
}

RobotRun runOf(const RobotJob &job)
{
    return {job.flowId, job.stateVersion, job.flowGuid, job.jobName};
}

StoredFileRow recordFor(const IntakeFile &file)
{
    StoredFileRow row;
    row.guid = newGuid();
    row.baseName = file.baseName();
    row.storedName = file.storedName();
    row.fileType = QFileInfo(file.storedName()).suffix();
    return row;
}

} // namespace

Result<RobotJob> RobotWork::take(const QString &jobName)
{
    const auto run = RobotChanges::take(jobName);
    if (!run)
        return run.outcome;
    return jobOf(run.value);
}

Result<QVector<RobotJob>> RobotWork::unfinished()
{
    const auto runs = RobotChanges::unfinished();
    if (!runs)
        return runs.outcome;
    QVector<RobotJob> jobs;
    for (const RobotRun &run : runs.value)
        jobs.append(jobOf(run));
    return jobs;
}

Outcome RobotWork::deliver(const RobotJob &job, const QString &path, Progress &progress)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(QCoreApplication::translate("RobotWork", "服务尚未启动"));
    if (Outcome allowed = RobotChanges::mayDeliver(runOf(job)); !allowed)
        return allowed;
    const Configuration &configuration = runtime->configuration();
    const auto file = IntakeFile::at(path, configuration.limits);
    if (!file)
        return file.outcome;
    FileStore &store = runtime->fileStore();
    if (Outcome stored = file.value.putInto(store, configuration.paths.staging, progress); !stored)
        return stored;
    Outcome recorded =
        RobotChanges::deliver(runOf(job), recordFor(file.value), file.value.baseName());
    if (!recorded)
        takeBackUnrecorded(*runtime, file.value.storedName());
    return recorded;
}

} // namespace KODMS::Services
