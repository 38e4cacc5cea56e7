// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/Kodms_User.h"

#include <string>

namespace KODMS::UI {

/// The signed-in user and the fetch of stored files. GUI thread.
class KODMS_SERVICES_API DMS_StdCommon {
public:
    /// The one instance; never null, never owned by the caller, not to be kept.
    static DMS_StdCommon *interface();

    /// The signed-in user, by value; id 0 when nobody is signed in.
    DataLib::Model::Kodms_User getCurrentUser();

    /// Fetches a stored file into the download folder as jobName + "." + type,
    /// verified. What stood there is replaced. A failure leaves no file there and
    /// is raised as a notice. Long work shows progress and can be cancelled.
    static void getFilesFrommogodbUuidTypeOriginName(std::string jobName, std::string uuid,
                                                     std::string type);

    DMS_StdCommon(const DMS_StdCommon &) = delete;
    DMS_StdCommon &operator=(const DMS_StdCommon &) = delete;

private:
    DMS_StdCommon() = default;
};

} // namespace KODMS::UI
