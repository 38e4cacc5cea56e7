// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_StdCommon.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::UI {

DMS_StdCommon *DMS_StdCommon::interface()
{
    static DMS_StdCommon common;
    return &common;
}

DataLib::Model::Kodms_User DMS_StdCommon::getCurrentUser()
{
    auto &services = FakeServices::instance();
    services.record("DMS_StdCommon::getCurrentUser");
    return services.user;
}

void DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName(std::string jobName, std::string uuid,
                                                         std::string type)
{
    // A test that needs a file to appear gives this operation a callback that writes it.
    FakeServices::instance().answer("DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName", jobName,
                                    uuid, type);
}

} // namespace KODMS::UI
