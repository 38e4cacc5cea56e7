// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/DownloadRights.h"
#include "desks/common/OrigFileColumns.h"
#include "desks/common/PagedSearch.h"
#include "desks/common/TableHelpers.h"
#include "desks/download/DownloadConditions.h"
#include "desks/download/OrigFileRow.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "foundation/search/SearchFields.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

/// Not shown, but read by the actions.
constexpr int HiddenFileColumns[] = {OrigFileColumn::Uuid, OrigFileColumn::Id,
                                     OrigFileColumn::Description, OrigFileColumn::FlowGuid,
                                     OrigFileColumn::ExecutorId};

constexpr int CustomerNameColumns[] = {OrigFileColumn::CustomerName,
                                       OrigFileColumn::CustomerLevelTwo,
                                       OrigFileColumn::CustomerLevelThree};

} // namespace

void DMS_Download_Widget::InitDownloadTableWidget()
{
    m_pJobTableWidget->setColumnCount(OrigFileColumn::Count);
    m_pJobTableWidget->setHorizontalHeaderLabels(origFileHeaders());
    for (int column : HiddenFileColumns)
        m_pJobTableWidget->setColumnHidden(column, true);
    if (!seesCustomerNames())
        for (int column : CustomerNameColumns)
            m_pJobTableWidget->setColumnHidden(column, true);
    m_pJobTableWidget->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pJobTableWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_pJobTableWidget->horizontalHeader(), SIGNAL(sectionClicked(int)), this,
            SLOT(on_horizontalHeader_sectionClicked(int)));
}

/// Who sees all customers but does not administer gets the file table and, until
/// the first search, the order history in it.
void DMS_Download_Widget::FillDownloadTableWidget()
{
    if (startsWithOrigFiles())
        on_m_pFilterLE_textEdited(QString());
    else
        fillOrderHisTableWidget();
}

void DMS_Download_Widget::on_m_pFilterLE_textEdited(const QString &text)
{
    clearTableData();
    if (DMS_UICommon::interface()->hasPreProcessRole()) {
        fillOrderHisTableWidget();
        return;
    }
    std::vector<DataLib::Model::Odbpp_OrigFile_View> files;
    int total = 0;
    if (!queryPage<DataLib::BLL::Odbpp_OrigFile_ViewBll>(*m_TurnPage, fileConditions(text), files,
                                                         total)) {
        m_TurnPage->setData(m_TableData, 0, QString());
        return;
    }
    m_TableData.clear();
    for (const auto &file : files)
        m_TableData.append(origFileRow(file));
    m_TurnPage->setData(m_TableData, total, m_EmptyText);
}

std::vector<DataLib::Model::DB_Search> DMS_Download_Widget::fileConditions(const QString &text)
{
    std::vector<DataLib::Model::DB_Search> list;
    setCurerntUserFilter(list);
    ConditionBuilder conditions(list);
    appendFileSearch(conditions, m_pFilterCMB->currentIndex(), text);
    if (list.empty()) // the page window needs a condition to stand on
        conditions.add(SearchField::OrigName, std::string());
    return list;
}

void DMS_Download_Widget::setCurerntUserFilter(std::vector<DataLib::Model::DB_Search> &list)
{
    if (!m_pUserIdLabel)
        return;
    ConditionBuilder conditions(list);
    conditions.equals().add(SearchField::FileExecutorId, m_pUserIdLabel->text().toStdString());
}

void DMS_Download_Widget::updateDownloadJobTable()
{
    clearTableData();
    on_m_pFilterLE_textEdited(m_pFilterLE->text());
}

void DMS_Download_Widget::on_m_TurnPage_currentPageChanged()
{
    updateDownloadJobTable();
}

void DMS_Download_Widget::on_m_pFilterCMB_currentIndexChanged(int)
{
    on_m_pFilterLE_textEdited(m_pFilterLE->text());
}

void DMS_Download_Widget::on_horizontalHeader_sectionClicked(int column)
{
    sortByHeaderClick(m_pJobTableWidget, column, m_SortColumn, m_SortDescending);
}

void DMS_Download_Widget::clearTableData()
{
    removeAllRows(m_pJobTableWidget);
}

} // namespace KODMS::UI
