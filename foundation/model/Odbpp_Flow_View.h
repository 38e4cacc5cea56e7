// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::DataLib::Model {

/// One row of the job-flow desk: job flow, job, people and files joined.
/// Texts are UTF-8, times are local "yyyy-MM-dd HH:mm:ss" or empty.
struct Odbpp_Flow_View {
    int id = 0; ///< flow id
    std::string jobName;
    std::string origJobName; ///< empty until an ODB++ job has been imported
    std::string origUploadTime;
    std::string odbppUploadTime;
    int odbppUploaded = 0; ///< 1: the latest upload is odbppUploadTime, else origUploadTime
    int layerCount = 0;
    int featureCount = 0;
    int flowStatus = 0; ///< 0 to 3, see flowStatusText()
    int checkFlag = 0;  ///< 0 to 2, see flowStatusText()
    std::string preCheckTime;
    std::string flowGuid;
    std::string preUserRealName;      ///< executor of the original file
    std::string preCheckUserRealName; ///< assigned pre-checker
    int preCheckUserId = 0;
    std::string tips; ///< job management remark
    std::string uuid; ///< stored name of the last imported file, else of the original file
    int webFlag = 0;  ///< 1 = the job name begins with "web"
    std::string orderSuffix;
    std::string origFileSuffix;
    int batchNumber = 0;
};

} // namespace KODMS::DataLib::Model
