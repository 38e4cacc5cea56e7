// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/FirstPage.h"

#include "services/records/RecordContext.h"
#include "services/records/conditions/ViewSearch.h"
#include "services/search/ColumnIndex.h"

#include <cstdlib>

namespace KODMS::Bench {

using namespace Services;

namespace {

ViewSearch::List firstPageBy(const char *field)
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
    for (int i = 0; i < rounds; ++i)
        open();
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
        ViewSearch flows(*context, SearchView::flows());
        ViewSearch files(*context, SearchView::origFiles());
        const bool ok = flows.run(firstPageBy("Flow_CreateTime"), {}) &&
                        files.run(firstPageBy("FlowTable_CreateTime"), {});
        if (!ok || flows.ids().isEmpty() || files.ids().isEmpty())
            std::exit(EXIT_FAILURE);
    });
}

} // namespace KODMS::Bench
