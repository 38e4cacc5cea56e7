// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_Flow_ViewBll.h"

#include "services/records/RowReader.h"
#include "services/records/ShownRecords.h"
#include "services/records/TimeText.h"
#include "services/records/ViewService.h"
#include "services/records/conditions/SearchView.h"

namespace KODMS::DataLib::BLL {

namespace {

using Model::Odbpp_Flow_View;
using Services::RecordContext;
using Services::SqlQuery;

Odbpp_Flow_View rowOf(const SqlQuery &query)
{
    const auto text = [&query](const char *column) { return query.text(column).toStdString(); };
    const auto time = [&query](const char *column) {
        return Services::shownTime(query.text(column)).toStdString();
    };
    Odbpp_Flow_View row;
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

void remember(RecordContext &context, const SqlQuery &query)
{
    if (context.shownRecords() == nullptr)
        return;
    Services::ShownRow shown;
    shown.view = Services::ShownRow::View::Flow;
    shown.rowId = query.number("row_id");
    shown.flowId = shown.rowId;
    shown.flowGuid = query.text("Flow_FlowGUID");
    shown.versions = Services::versionsOf(query);
    context.shownRecords()->shown(shown);
}

void readRows(RecordContext &context, const QVector<int> &ids, std::vector<Odbpp_Flow_View> &rows)
{
    rows.resize(static_cast<std::size_t>(ids.size()));
    Services::RowReader(context.database(), "select_flow_rows")
        .read(ids, [&](int place, const SqlQuery &query) {
            rows[static_cast<std::size_t>(place)] = rowOf(query);
            remember(context, query);
        });
}

} // namespace

bool Odbpp_Flow_ViewBll::selectAndCountBySearchModel(std::vector<Model::DB_Search> &conditions,
                                                     std::vector<Model::DB_Search> &countConditions,
                                                     std::vector<Odbpp_Flow_View> &rows,
                                                     int &totalCount)
{
    rows.clear();
    Services::ViewService service("search flows", Services::SearchView::flows());
    const bool ok = service.search(
        conditions, countConditions,
        [&rows](RecordContext &context, const QVector<int> &ids) { readRows(context, ids, rows); },
        &totalCount);
    if (!ok)
        rows.clear();
    return ok;
}

} // namespace KODMS::DataLib::BLL
