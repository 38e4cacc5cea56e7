// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/FlowViewRow.h"

#include "services/records/SqlQuery.h"
#include "services/records/TimeText.h"

namespace KODMS::Services {

DataLib::Model::Odbpp_Flow_View flowViewRow(const SqlQuery &query)
{
    const auto text = [&query](const char *column) { return query.text(column).toStdString(); };
    const auto time = [&query](const char *column) {
        return shownTime(query.text(column)).toStdString();
    };
    DataLib::Model::Odbpp_Flow_View row;
    row.id = query.number("row_id");
    row.jobName = text("KoJobName");
    row.origJobName = text("Flow_OrigJobName");
    row.origUploadTime = time("Flow_OrigUploadTime");
    row.odbppUploadTime = time("Flow_OdbppUploadTime");
    row.odbppUploaded = query.number("Flow_OdbppUploaded");
    row.layerCount = query.number("JobTable_LayerCount");
    row.featureCount = query.number("JobTable_FeatureCount");
    row.flowStatus = query.number("Flow_FlowStatus");
    row.checkFlag = query.number("Flow_CheckFlag");
    row.preCheckTime = time("Flow_PreCheckTime");
    row.flowGuid = text("Flow_FlowGUID");
    row.preUserRealName = text("PreUserRealName_OFAssign_Executor");
    row.preCheckUserRealName = text("PreCheckUserRealName_PCAssign_Executor");
    row.preCheckUserId = query.number("PCAssign_ExecutorId");
    row.tips = text("Flow_Tips");
    row.uuid = text("Flow_FileUuid");
    row.webFlag = query.number("Flow_WebFlag");
    row.orderSuffix = text("Order_Suffix");
    row.origFileSuffix = text("OrigFile_Suffix");
    row.batchNumber = query.number("Flow_UploadBatchNum");
    return row;
}

} // namespace KODMS::Services
