// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::DataLib::Model {

/// One row of the original-file desk.
/// Texts are UTF-8, times are local "yyyy-MM-dd HH:mm:ss" or empty.
struct Odbpp_OrigFile_View {
    std::string origName;
    std::string koName; ///< customer short name
    std::string koCode; ///< customer code
    std::string fileType;
    int jobSerialNumber = 0;
    std::string uuid; ///< stored name with suffix
    int id = 0;
    std::string fileDescription;
    std::string fileTips; ///< source remark
    std::string flowGuid;
    std::string superiorCo1; ///< customer level two
    std::string superiorCo2; ///< customer level three
    std::string updateTime;
    std::string createTime;
    std::string preUserRealName; ///< executor
    int preUserId = 0;
};

} // namespace KODMS::DataLib::Model
