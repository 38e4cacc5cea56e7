// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"

#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"
#include "services/tasks/TaskRunner.h"

using namespace KODMS::Services;

namespace KODMS::UI {

class DMS_UICommon::Private {
public:
    /// Nobody signed in, or no database: no right.
    static bool actorHas(Role role)
    {
        const RecordContext *context = RecordContext::current();
        return context && context->actor().roles.has(role);
    }

    bool refreshIsHeldBack = false;
};

DMS_UICommon::DMS_UICommon() : d(std::make_unique<Private>())
{
    connect(&NoticeHub::instance(), &NoticeHub::raised, this, &DMS_UICommon::serviceNotice);
    connect(&TaskRunner::instance(), &TaskRunner::idle, this, [this] {
        if (d->refreshIsHeldBack)
            emitGobalSingal();
    });
}

DMS_UICommon::~DMS_UICommon() = default;

DMS_UICommon *DMS_UICommon::interface()
{
    static DMS_UICommon hub;
    return &hub;
}

bool DMS_UICommon::hasAdminRole()
{
    return Private::actorHas(Role::Admin);
}

bool DMS_UICommon::hasPreProcessRole()
{
    return Private::actorHas(Role::PreProcess);
}

bool DMS_UICommon::hasPreCheckAssignRole()
{
    return Private::actorHas(Role::PreCheckAssign);
}

bool DMS_UICommon::hasTestAdminRole()
{
    return Private::actorHas(Role::TestAdmin);
}

bool DMS_UICommon::hasCheckAuthority()
{
    return Private::actorHas(Role::CheckAuthority);
}

bool DMS_UICommon::hasOrigFileUpdateAuthority()
{
    return Private::actorHas(Role::OrigFileUpdate);
}

bool DMS_UICommon::hasOrigFileAssignRole()
{
    return Private::actorHas(Role::OrigFileAssign);
}

bool DMS_UICommon::hasShowCompanyNameRole()
{
    return Private::actorHas(Role::ShowCompanyName);
}

void DMS_UICommon::emitGobalSingal()
{
    // A desk may be in the middle of its rows: no table changes under a running task.
    d->refreshIsHeldBack = TaskRunner::instance().isBusy();
    if (d->refreshIsHeldBack)
        return;
    Q_EMIT refreshOrigFileTable();
    Q_EMIT refreshExportJobTable();
}

void DMS_UICommon::importNewJob(const QString &path, const QString &jobName)
{
    Q_EMIT camImportRequested(path, jobName);
}

void DMS_UICommon::inputNewJob(const QString &jobName, const QString &path)
{
    Q_EMIT camInputRequested(jobName, path);
}

void DMS_UICommon::sendemitCAMExportJobInfo(const QString &jobName, int jobId)
{
    Q_EMIT camExportRequested(jobName, jobId);
}

} // namespace KODMS::UI
