// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/FlowRow.h"
#include "desks/common/JobColumns.h"
#include "desks/common/TableHelpers.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QHeaderView>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr int HiddenJobColumns[] = {
    JobColumn::Id,       JobColumn::UploadTime,  JobColumn::LayerCount,    JobColumn::FeatureCount,
    JobColumn::FlowGuid, JobColumn::PreChecker,  JobColumn::PreCheckerId,  JobColumn::Uuid,
    JobColumn::WebFlag,  JobColumn::OrderSuffix, JobColumn::OrigFileSuffix};

} // namespace

void DMS_Export_Widget::InitExportTableWidget()
{
    m_pJobTableWidget->setColumnCount(JobColumn::Count);
    m_pJobTableWidget->setHorizontalHeaderLabels(flowHeaders());
    for (int column : HiddenJobColumns)
        m_pJobTableWidget->setColumnHidden(column, true);
    m_pJobTableWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pJobTableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(m_pJobTableWidget->horizontalHeader(), SIGNAL(sectionClicked(int)), this,
            SLOT(on_horizontalHeader_sectionClicked(int)));
    connect(m_pJobTableWidget, SIGNAL(itemChanged(QTableWidgetItem *)), this,
            SLOT(on_m_pJobTableWidget_itemChanged(QTableWidgetItem *)));
    initQuestionTable();
}

void DMS_Export_Widget::on_horizontalHeader_sectionClicked(int index)
{
    sortByHeaderClick(m_pJobTableWidget, index, m_SortColumn, m_SortDescending);
}

/// Whichever cell was edited, its text becomes the flow's remark.
void DMS_Export_Widget::on_m_pJobTableWidget_itemChanged(QTableWidgetItem *item)
{
    const int row = rowOfItem(m_pJobTableWidget, item);
    if (row == -1)
        return;
    const QString flowGuid = cellText(m_pJobTableWidget, row, JobColumn::FlowGuid);
    DataLib::BLL::Odbpp_JobFlowBll().UpdateTips(DMS_StdCommon::interface()->getCurrentUser().id,
                                                item->text().toStdString(), flowGuid.toStdString());
}

} // namespace KODMS::UI
