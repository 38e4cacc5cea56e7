// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/FirstPage.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "services/records/RecordContext.h"
#include "services/search/ColumnIndex.h"

#include <cstdlib>

namespace KODMS::Bench {

using namespace Services;

namespace {

std::vector<DataLib::Model::DB_Search> firstPageBy(const char *field)
{
    DataLib::Model::DB_Search all;
    all.sortEnabled = 1;
    all.sortField = field;
    all.sortDirection = 1;
    all.pageEnabled = 1;
    all.pageStart = "0";
    all.pageSize = "30";
    return {all};
}

} // namespace

void FirstPage::measure(int rounds)
{
    RecordContext *before = RecordContext::current();
    for (int i = 0; i < rounds; ++i)
        open();
    RecordContext::setCurrent(before);
}

/// As a desk does: the rows with all that they show, and how many there are.
template <typename Service, typename Row> void FirstPage::show(const char *field)
{
    auto conditions = firstPageBy(field);
    auto counted = conditions;
    counted.back().pageEnabled = 0;
    std::vector<Row> rows;
    int total = 0;
    if (!Service().selectAndCountBySearchModel(conditions, counted, rows, total) || rows.empty() ||
        total < static_cast<int>(rows.size()))
        std::exit(EXIT_FAILURE);
}

void FirstPage::open()
{
    std::unique_ptr<RecordContext> context;
    std::unique_ptr<ColumnIndex> index;
    m_watch.measure([&] {
        context = std::make_unique<RecordContext>(std::make_unique<Database>(m_settings));
        index = std::make_unique<ColumnIndex>(m_settings);
        context->setViewIndex(index.get());
        Actor actor;
        actor.userId = 1;
        actor.roles.insert(Role::Admin);
        context->setActor(actor);
        RecordContext::setCurrent(context.get());
        using namespace DataLib;
        show<BLL::Odbpp_Flow_ViewBll, Model::Odbpp_Flow_View>("Flow_CreateTime");
        show<BLL::Odbpp_OrigFile_ViewBll, Model::Odbpp_OrigFile_View>("FlowTable_CreateTime");
    });
    RecordContext::setCurrent(nullptr);
}

} // namespace KODMS::Bench
