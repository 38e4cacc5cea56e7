// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS {

/// The configuration as the desks see it. UTF-8. Paths are joined plainly, so
/// the two folders end in a path separator.
struct KODMS_Config {
    std::string fileStoreDb;
    std::string fileStoreBucket;
    std::string stagingDir;  ///< where a chosen file is copied before it is stored
    std::string downloadDir; ///< where jobs are downloaded and unpacked
    std::string robotHost;   ///< numeric IP address
    int robotPort = 0;
};

} // namespace KODMS
