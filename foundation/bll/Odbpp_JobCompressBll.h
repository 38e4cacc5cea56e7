// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Rows of the original-file desk: what the customer sent, as it stands now.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_JobCompressBll {
public:
    /// Deletes an original file's records and then its stored file.
    bool DelOrigFile(int id, std::string uuid, std::string flowGuid);

    /// Gives the row another stored file (name with suffix) and original name.
    bool UpdateZipUUID_OrigName(int id, std::string storedName, int userId, std::string origName);
};

} // namespace KODMS::DataLib::BLL
