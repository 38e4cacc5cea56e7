// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;
using KODMS::Fakes::Right;

namespace KODMS::UI {

class DMS_UICommon::Private {
public:
    static bool has(const char *question, Right right)
    {
        auto &services = FakeServices::instance();
        services.record(question);
        return services.rights.count(right) == 1;
    }
};

DMS_UICommon::DMS_UICommon() = default;

DMS_UICommon::~DMS_UICommon() = default;

DMS_UICommon *DMS_UICommon::interface()
{
    static DMS_UICommon hub;
    return &hub;
}

bool DMS_UICommon::hasAdminRole()
{
    return Private::has("DMS_UICommon::hasAdminRole", Right::Admin);
}

bool DMS_UICommon::hasPreProcessRole()
{
    return Private::has("DMS_UICommon::hasPreProcessRole", Right::PreProcess);
}

bool DMS_UICommon::hasPreCheckAssignRole()
{
    return Private::has("DMS_UICommon::hasPreCheckAssignRole", Right::PreCheckAssign);
}

bool DMS_UICommon::hasTestAdminRole()
{
    return Private::has("DMS_UICommon::hasTestAdminRole", Right::TestAdmin);
}

bool DMS_UICommon::hasCheckAuthority()
{
    return Private::has("DMS_UICommon::hasCheckAuthority", Right::CheckAuthority);
}

bool DMS_UICommon::hasOrigFileUpdateAuthority()
{
    return Private::has("DMS_UICommon::hasOrigFileUpdateAuthority", Right::OrigFileUpdate);
}

bool DMS_UICommon::hasOrigFileAssignRole()
{
    return Private::has("DMS_UICommon::hasOrigFileAssignRole", Right::OrigFileAssign);
}

bool DMS_UICommon::hasShowCompanyNameRole()
{
    return Private::has("DMS_UICommon::hasShowCompanyNameRole", Right::ShowCompanyName);
}

void DMS_UICommon::emitGobalSingal()
{
    auto &services = FakeServices::instance();
    services.record("DMS_UICommon::emitGobalSingal");
    if (!services.hubRaisesSignals)
        return;
    Q_EMIT refreshOrigFileTable();
    Q_EMIT refreshExportJobTable();
}

void DMS_UICommon::importNewJob(const QString &path, const QString &jobName)
{
    FakeServices::instance().answer("DMS_UICommon::importNewJob", path, jobName);
}

void DMS_UICommon::inputNewJob(const QString &jobName, const QString &path)
{
    FakeServices::instance().answer("DMS_UICommon::inputNewJob", jobName, path);
}

void DMS_UICommon::sendemitCAMExportJobInfo(const QString &jobName, int jobId)
{
    FakeServices::instance().record("DMS_UICommon::sendemitCAMExportJobInfo", jobName, jobId);
}

} // namespace KODMS::UI
