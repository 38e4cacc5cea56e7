// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/FlowRow.h"
#include "desks/common/PagedSearch.h"
#include "desks/common/TableHelpers.h"
#include "desks/export/JobConditions.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/search/SearchFields.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

bool seesEveryFlow()
{
    return DMS_UICommon::interface()->hasAdminRole() ||
           DMS_UICommon::interface()->hasTestAdminRole();
}

std::string typed(const QLineEdit *edit)
{
    return edit->text().toStdString();
}

} // namespace

/// Every filter is read afresh, whichever of them was edited.
void DMS_Export_Widget::on_m_pFilterLE_textEdited(const QString &)
{
    m_pJobTableWidget->blockSignals(true);
    clearTableData();
    m_TableData.clear();

    std::vector<DataLib::Model::Odbpp_Flow_View> flows;
    int total = 0;
    if (!queryPage<DataLib::BLL::Odbpp_Flow_ViewBll>(*m_TurnPage, searchConditions(), flows,
                                                     total)) {
        // The table stays silent until a later search finds flows.
        m_TurnPage->setData(m_TableData, 0, QString());
        return;
    }
    for (const auto &flow : flows)
        m_TableData.append(flowRow(flow));
    m_TurnPage->setData(m_TableData, total, m_LocateJobName);
    m_pJobTableWidget->blockSignals(false);
}

/// One working record serves all conditions; the order of the steps and what
/// each leaves behind for the next are what the flow view expects.
std::vector<DataLib::Model::DB_Search> DMS_Export_Widget::searchConditions()
{
    std::vector<DataLib::Model::DB_Search> list;
    ConditionBuilder conditions(list);
    conditions.joinByAnd().contains().plainRelation();
    if (!m_pJobFilterLE->text().isEmpty())
        conditions.add(SearchField::JobName, typed(m_pJobFilterLE));
    if (!m_pLayerFilterLE->text().isEmpty())
        conditions.equals().add(SearchField::LayerCount, typed(m_pLayerFilterLE));
    if (!m_pFeatureFilterLE->text().isEmpty())
        conditions.equals().add(SearchField::FeatureCount, typed(m_pFeatureFilterLE));
    if (!m_pPrerFilterLE->text().isEmpty())
        conditions.contains().add(SearchField::ExecutorName, typed(m_pPrerFilterLE));
    if (!m_pCheckerFilterLE->text().isEmpty())
        conditions.contains().add(SearchField::BatchNumber, typed(m_pCheckerFilterLE));
    if (!seesEveryFlow())
        setCurerntUserFilter(list);
    conditions.contains();
    appendStatusFilter(conditions, m_pStatusFilterCMB->currentIndex());
    if (list.empty())
        conditions.add(SearchField::JobName);
    if (!seesEveryFlow())
        appendStatusScope(conditions);
    conditions.newestFirst(SearchField::FlowCreateTime).addAgain();
    return list;
}

void DMS_Export_Widget::setCurerntUserFilter(std::vector<DataLib::Model::DB_Search> &list)
{
    ConditionBuilder conditions(list);
    appendUserScope(conditions);
}

void DMS_Export_Widget::FillExportTableWidget()
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::updateExportJobTable()
{
    clearTableData();
    on_m_pFilterLE_textEdited(m_pFilterLE->text());
}

void DMS_Export_Widget::on_m_TurnPage_currentPageChanged()
{
    updateExportJobTable();
}

void DMS_Export_Widget::on_m_pJobFilterLE_textEdited(const QString &)
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::on_m_pLayerFilterLE_textEdited(const QString &)
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::on_m_pFeatureFilterLE_textEdited(const QString &)
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::on_m_pPrerFilterLE_textEdited(const QString &)
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::on_m_pCheckerFilterLE_textEdited(const QString &)
{
    on_m_pFilterLE_textEdited(QString());
}

void DMS_Export_Widget::on_m_pFilterCMB_currentIndexChanged(int)
{
    on_m_pFilterLE_textEdited(m_pFilterLE->text());
}

void DMS_Export_Widget::on_m_pStatusFilterCMB_currentIndexChanged(int)
{
    on_m_pFilterLE_textEdited(m_pFilterLE->text());
}

void DMS_Export_Widget::clearTableData()
{
    removeAllRows(m_pJobTableWidget);
}

} // namespace KODMS::UI
