// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "services/api/ListExport.h"

#include <QStringList>

#include <vector>

namespace KODMS::Tests {

/// A search as the job-flow desk makes it, newest first, of the first page.
inline Services::ShownSearch flowSearch(const char *field, const std::string &value)
{
    DataLib::Model::DB_Search condition;
    condition.fuzzy = 1;
    condition.fieldName = field;
    condition.value = value;
    DataLib::Model::DB_Search last = condition;
    last.sortEnabled = 1;
    last.sortField = "Flow_CreateTime";
    last.sortDirection = 1;
    last.pageEnabled = 1;
    last.pageStart = "0";
    last.pageSize = "30";
    return {Services::ShownSearch::View::Flows, {condition, last}};
}

/// Job name, remark and layers of a flow.
inline QVector<Services::FlowColumn> flowColumns()
{
    using Flow = DataLib::Model::Odbpp_Flow_View;
    return {{QStringLiteral("料号名称"), 12, false,
             [](const Flow &flow) { return QString::fromStdString(flow.jobName); }},
            {QStringLiteral("备注"), 0, false,
             [](const Flow &flow) { return QString::fromStdString(flow.tips); }},
            {QStringLiteral("板层"), 0, true,
             [](const Flow &flow) { return QString::number(flow.layerCount); }}};
}

/// What a person sees who turns every page.
inline QStringList jobsPageByPage(const Services::ShownSearch &search)
{
    QStringList jobs;
    for (int start = 0;; start += 30) {
        auto conditions = search.conditions;
        auto count = conditions;
        conditions.back().pageStart = std::to_string(start);
        std::vector<DataLib::Model::Odbpp_Flow_View> rows;
        int total = 0;
        DataLib::BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(conditions, count, rows,
                                                                       total);
        for (const auto &row : rows)
            jobs << QString::fromStdString(row.jobName);
        if (rows.size() < 30)
            return jobs;
    }
}

} // namespace KODMS::Tests
