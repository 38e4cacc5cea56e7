// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Stored file versions.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_OrigFilesBll {
public:
    /// Records a file of the file store as a new version. Refused when no file is
    /// stored under `storedName`. `fileType` is empty for one stored from a folder.
    bool inputOrigFile(std::string guid, std::string baseName, std::string storedName,
                       std::string fileType, std::string customerCode, int state, int userId);
};

} // namespace KODMS::DataLib::BLL
