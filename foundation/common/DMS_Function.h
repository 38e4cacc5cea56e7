// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DMS_Function {

/// Unpacks a downloaded archive into `targetFolder`. The type is told by the
/// archive's content; `archiveType` is only a hint. Returns the number of files
/// written, 0 when the archive is empty, -1 on failure (nothing is then left
/// behind). GUI thread; long work shows progress and can be cancelled.
KODMS_SERVICES_API int ExtractorFileFromcompressFile(std::wstring archivePath,
                                                     std::wstring archiveType,
                                                     std::wstring targetFolder);

} // namespace KODMS::DMS_Function
