// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/FlowRow.h"
#include "desks/common/JobColumns.h"
#include "desks/common/PagedSearch.h"
#include "desks/download/DownloadConditions.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

/// As on the job-flow desk, but for the reviewer's name.
constexpr int HiddenHistoryColumns[] = {JobColumn::Id,          JobColumn::UploadTime,
                                        JobColumn::LayerCount,  JobColumn::FeatureCount,
                                        JobColumn::FlowGuid,    JobColumn::PreCheckerId,
                                        JobColumn::Uuid,        JobColumn::WebFlag,
                                        JobColumn::OrderSuffix, JobColumn::OrigFileSuffix};

} // namespace

void DMS_Download_Widget::initOrderHisTableWidget()
{
    m_pJobTableWidget->setColumnCount(JobColumn::Count);
    m_pJobTableWidget->setHorizontalHeaderLabels(flowHeaders());
    for (int column : HiddenHistoryColumns)
        m_pJobTableWidget->setColumnHidden(column, true);
    m_pJobTableWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pJobTableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pJobTableWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_pJobTableWidget->horizontalHeader(), SIGNAL(sectionClicked(int)), this,
            SLOT(on_horizontalHeader_sectionClicked(int)));
}

void DMS_Download_Widget::fillOrderHisTableWidget()
{
    clearTableData();
    m_TableData.clear();
    std::vector<DataLib::Model::DB_Search> list;
    ConditionBuilder conditions(list);
    appendHistorySearch(conditions, m_pFilterCMB->currentIndex(), m_pFilterLE->text());

    std::vector<DataLib::Model::Odbpp_Flow_View> flows;
    int total = 0;
    if (!queryPage<DataLib::BLL::Odbpp_Flow_ViewBll>(*m_TurnPage, std::move(list), flows, total)) {
        m_TurnPage->setData(m_TableData, 0, QString());
        return;
    }
    for (const auto &flow : flows)
        m_TableData.append(flowRow(flow));
    m_TurnPage->setData(m_TableData, total, m_EmptyText);
}

} // namespace KODMS::UI
