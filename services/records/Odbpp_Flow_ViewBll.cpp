// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_Flow_ViewBll.h"

#include "services/records/FlowViewRow.h"
#include "services/records/RowReader.h"
#include "services/records/ShownRecords.h"
#include "services/records/ViewService.h"
#include "services/records/conditions/SearchView.h"
#include "services/records/conditions/ViewSearch.h"

namespace KODMS::DataLib::BLL {

namespace {

using Model::Odbpp_Flow_View;
using Services::RecordContext;
using Services::SqlQuery;

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
    shown.jobName = query.text("KoJobName");
    context.shownRecords()->shown(shown);
}

bool readRows(RecordContext &context, const Services::ViewSearch &search,
              std::vector<Odbpp_Flow_View> &rows)
{
    rows.clear();
    rows.resize(static_cast<std::size_t>(search.ids().size()));
    const QString moment = context.database().isInTransaction() ? QString() : search.moment();
    return Services::RowReader(context.database(), "select_flow_rows")
        .readAt(moment, search.ids(), [&](int place, const SqlQuery &query) {
            rows[static_cast<std::size_t>(place)] = Services::flowViewRow(query);
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
        [&rows](RecordContext &context, const Services::ViewSearch &search) {
            return readRows(context, search, rows);
        },
        &totalCount);
    if (!ok)
        rows.clear();
    return ok;
}

} // namespace KODMS::DataLib::BLL
