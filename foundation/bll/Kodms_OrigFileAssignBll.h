// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Who works on an original file.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Kodms_OrigFileAssignBll {
public:
    /// First assignment of an executor.
    bool AssignOrigFile(int origFileId, int currentUserId, std::string flowGuid,
                        int recordingUserId, int assigneeId);

    /// Changes the executor of an assigned original file.
    bool AssignOrigFileUpdate(int currentUserId, std::string flowGuid, int assigneeId);
};

} // namespace KODMS::DataLib::BLL
