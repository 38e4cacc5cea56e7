// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DMS_Function.h"

#include "tests/fakes/FakeServices.h"

namespace KODMS::DMS_Function {

int ExtractorFileFromcompressFile(std::wstring archivePath, std::wstring archiveType,
                                  std::wstring targetFolder)
{
    return Fakes::FakeServices::instance().answer("DMS_Function::ExtractorFileFromcompressFile",
                                                  archivePath, archiveType, targetFolder);
}

} // namespace KODMS::DMS_Function
