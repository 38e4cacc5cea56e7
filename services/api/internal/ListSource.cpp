// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/ListSource.h"

#include "services/records/RowReader.h"
#include "services/records/conditions/ViewSearch.h"

#include <QCoreApplication>

#include <memory>

namespace KODMS::Services {

namespace {

/// The desk asks for a page of what is wanted whole.
std::vector<DataLib::Model::DB_Search> everyPage(std::vector<DataLib::Model::DB_Search> conditions)
{
    for (DataLib::Model::DB_Search &condition : conditions)
        condition.pageEnabled = 0;
    return conditions;
}

} // namespace

ListSource::ListSource(const DatabaseSettings &settings, const Actor &actor)
    : m_context(std::make_unique<Database>(settings)),
      m_oneState(m_context.database(), Transaction::Purpose::Read)
{
    m_context.setActor(actor);
}

Outcome ListSource::find(const ShownSearch &search)
{
    const bool isFlows = search.view == ShownSearch::View::Flows;
    m_statement = isFlows ? "select_flow_rows" : "select_orig_file_rows";
    ViewSearch all(m_context, isFlows ? SearchView::flows() : SearchView::origFiles());
    const auto conditions = everyPage(search.conditions);
    if (!all.run(conditions, conditions))
        return Outcome::failure(QCoreApplication::translate("ListExport", "查询条件有误，未导出"),
                                all.problem());
    m_ids = all.ids();
    return Outcome::success();
}

int ListSource::readNext(const std::function<void(int, const SqlQuery &)> &take)
{
    const QVector<int> ids = m_ids.mid(m_next, RowReader::chunkSize);
    if (!ids.isEmpty())
        RowReader(m_context.database(), m_statement).read(ids, take);
    m_next += ids.size();
    return ids.size();
}

} // namespace KODMS::Services
