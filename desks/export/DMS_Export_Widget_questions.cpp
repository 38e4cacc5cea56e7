// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "desks/export/QuestionMessages.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/status/FlowStatus.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QBrush>
#include <QColor>
#include <QHeaderView>
#include <QPointer>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

using DataLib::BLL::Odbpp_QuestionsBll;
using DataLib::Model::Odbpp_Questions;

constexpr char QuestionsOfJob[] = "JobId";
constexpr int Resolved = 2; // check flag: shown as passed

std::vector<Odbpp_Questions> questionsOfRow(const QTableWidget *table, int row)
{
    const int jobId = cellText(table, row, JobColumn::Id).toInt();
    std::vector<Odbpp_Questions> questions;
    Odbpp_QuestionsBll().select({}, {{QuestionsOfJob, jobId}}, questions);
    return questions;
}

/// All but the status; returns the row.
int appendQuestion(QTableWidget *table, const Odbpp_Questions &question)
{
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, QuestionColumn::Id, new QTableWidgetItem(QString::number(question.id)));
    table->setItem(row, QuestionColumn::Title,
                   new QTableWidgetItem(QString::fromStdString(question.title)));
    table->setItem(row, QuestionColumn::Description,
                   new QTableWidgetItem(QString::fromStdString(question.description)));
    return row;
}

QTableWidgetItem *makeStatus(int checkFlag)
{
    const QuestionCheck check = questionCheckText(checkFlag);
    auto *status = new QTableWidgetItem(check.text);
    if (check.colour)
        status->setForeground(QBrush(QColor(*check.colour)));
    return status;
}

} // namespace

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
    const auto questions = questionsOfRow(m_pJobTableWidget, row);
    clearQuestionTableData();
    for (const auto &question : questions) {
        const int questionRow = appendQuestion(m_pQuestionTableWidget, question);
        m_pQuestionTableWidget->setItem(questionRow, QuestionColumn::Status,
                                        makeStatus(question.checkFlag));
    }
}

/// No control leads here. Unlike a click on the row, it leaves the status empty.
void DMS_Export_Widget::on_m_pCheckJobPB_clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, JobFlowDesk.noRowMessage);
        return;
    }
    const auto questions = questionsOfRow(m_pJobTableWidget, row);
    clearQuestionTableData();
    for (const auto &question : questions)
        appendQuestion(m_pQuestionTableWidget, question);
}

/// The window itself stores the question; the tables stay as they are.
void DMS_Export_Widget::on_m_pCreateQuestionPB_clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, JobFlowDesk.noRowMessage);
        return;
    }
    const int flowId = cellText(m_pJobTableWidget, row, JobColumn::Id).toInt();
    if (m_pCreateQuestionWidget)
        m_pCreateQuestionWidget->m_id = flowId;
    else
        m_pCreateQuestionWidget = new DMS_JobCheck_Widget(flowId, false, this);
    m_pCreateQuestionWidget->show();
}

/// Loading may ask and wait, and the window may go meanwhile, with the desk or without.
void DMS_Export_Widget::on_m_pViewQuestionPB_clicked()
{
    const int row = m_pQuestionTableWidget->currentRow();
    if (row == -1) {
        inform(this, SelectQuestion);
        return;
    }
    const int questionId = cellText(m_pQuestionTableWidget, row, QuestionColumn::Id).toInt();
    if (!m_pViewQuestionWidget)
        m_pViewQuestionWidget = new DMS_JobCheck_Widget(questionId, true, this);
    const QPointer<DMS_JobCheck_Widget> window = m_pViewQuestionWidget;
    window->m_id = questionId;
    window->getQuestionData();
    if (window)
        window->show();
}

void DMS_Export_Widget::on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem *)
{
    on_m_pViewQuestionPB_clicked();
}

/// Lists the questions of the job that is current now, whosever were listed before.
void DMS_Export_Widget::on_m_pResolveQuestionPB_clicked()
{
    const int row = m_pQuestionTableWidget->currentRow();
    if (row == -1) {
        inform(this, SelectQuestion);
        return;
    }
    const int questionId = cellText(m_pQuestionTableWidget, row, QuestionColumn::Id).toInt();
    Odbpp_QuestionsBll().UpdateQuestionStatus(questionId, Resolved,
                                              DMS_StdCommon::interface()->getCurrentUser().id);
    on_m_pJobTableWidget_ItemClicked(nullptr);
}

void DMS_Export_Widget::clearQuestionTableData()
{
    removeAllRows(m_pQuestionTableWidget);
}

} // namespace KODMS::UI
