// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/OrigFileViewRow.h"

#include "services/records/SqlQuery.h"
#include "services/records/TimeText.h"

namespace KODMS::Services {

DataLib::Model::Odbpp_OrigFile_View origFileViewRow(const SqlQuery &query)
{
    const auto text = [&query](const char *column) { return query.text(column).toStdString(); };
    const auto time = [&query](const char *column) {
        return shownTime(query.text(column)).toStdString();
    };
    DataLib::Model::Odbpp_OrigFile_View row;
    row.origName = text("OrigName");
    row.koName = text("KoName");
    row.koCode = text("KoCode");
    row.fileType = text("FileType");
    row.jobSerialNumber = query.number("JobSerialNumber");
    row.uuid = text("FileUuid");
    row.id = query.number("row_id");
    row.fileDescription = text("FileDescription");
    row.fileTips = text("FileTips");
    row.flowGuid = text("Flow_FlowGUID");
    row.superiorCo1 = text("SuperiorCo1");
    row.superiorCo2 = text("SuperiorCo2");
    row.updateTime = time("UpdateTime");
    row.createTime = time("CreateTime");
    row.preUserRealName = text("PreUser_RealName");
    row.preUserId = query.number("PreUser_id");
    return row;
}

} // namespace KODMS::Services
