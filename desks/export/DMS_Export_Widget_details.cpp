// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/FlowRow.h"
#include "desks/common/JobColumns.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/status/FlowStatus.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QBrush>
#include <QColor>
#include <QHeaderView>
#include <QPointer>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char QuestionsOfJob[] = "JobId";

constexpr int HiddenJobColumns[] = {
    JobColumn::Id,       JobColumn::UploadTime,  JobColumn::LayerCount,    JobColumn::FeatureCount,
    JobColumn::FlowGuid, JobColumn::PreChecker,  JobColumn::PreCheckerId,  JobColumn::Uuid,
    JobColumn::WebFlag,  JobColumn::OrderSuffix, JobColumn::OrigFileSuffix};

void appendQuestion(QTableWidget *table, const DataLib::Model::Odbpp_Questions &question)
{
    const QuestionCheck check = questionCheckText(question.checkFlag);
    auto *status = new QTableWidgetItem(check.text);
    if (check.colour)
        status->setForeground(QBrush(QColor(*check.colour)));
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, QuestionColumn::Id, new QTableWidgetItem(QString::number(question.id)));
    table->setItem(row, QuestionColumn::Title,
                   new QTableWidgetItem(QString::fromStdString(question.title)));
    table->setItem(row, QuestionColumn::Description,
                   new QTableWidgetItem(QString::fromStdString(question.description)));
    table->setItem(row, QuestionColumn::Status, status);
}

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

void DMS_Export_Widget::initQuestionTable()
{
    m_pQuestionTableWidget->setColumnCount(QuestionColumn::Count);
    m_pQuestionTableWidget->setHorizontalHeaderLabels({QStringLiteral("Id"), QStringLiteral("标题"),
                                                       QStringLiteral("描述"),
                                                       QStringLiteral("状态")});
    m_pQuestionTableWidget->setColumnHidden(QuestionColumn::Id, true);
    m_pQuestionTableWidget->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_pQuestionTableWidget->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pQuestionTableWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void DMS_Export_Widget::on_horizontalHeader_sectionClicked(int index)
{
    sortByHeaderClick(m_pJobTableWidget, index, m_SortColumn, m_SortDescending);
}

void DMS_Export_Widget::on_m_pJobTableWidget_ItemClicked(QTableWidgetItem *)
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        const QPointer<DMS_Export_Widget> desk(this);
        inform(this, JobFlowDesk.noRowMessage);
        if (desk)
            m_pQuestionTableWidget->repaint();
        return;
    }
    const int jobId = cellText(m_pJobTableWidget, row, JobColumn::Id).toInt();
    std::vector<DataLib::Model::Odbpp_Questions> questions;
    DataLib::BLL::Odbpp_QuestionsBll().select({}, {{QuestionsOfJob, jobId}}, questions);
    clearQuestionTableData();
    for (const auto &question : questions)
        appendQuestion(m_pQuestionTableWidget, question);
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

void DMS_Export_Widget::clearQuestionTableData()
{
    removeAllRows(m_pQuestionTableWidget);
}

} // namespace KODMS::UI
