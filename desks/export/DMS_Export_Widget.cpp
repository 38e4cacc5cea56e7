// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <utility>

namespace KODMS::UI {

DMS_Export_Widget::DMS_Export_Widget(QWidget *parent) : QWidget(parent)
{
    buildFilterControls();
    buildFilterPairs();
    buildFilterRows();
    buildActions();
    buildJobTable();
    buildReviewButtons();
    buildJobLayout();
    buildQuestionBox();
    buildDownloadButton();
    buildBottomRow();
    buildMainLayout();
    InitExportTableWidget();
    FillExportTableWidget();
    FillAssignerCMB();
    connectControls();
}

DMS_Export_Widget::~DMS_Export_Widget() = default;

void DMS_Export_Widget::setFlowDetailsData(QString details)
{
    m_flowDetails = std::move(details);
    updateExportJobTable();
}

void DMS_Export_Widget::on_parent_main_ui_closed()
{
    if (m_pDMS_Import_Widget)
        m_pDMS_Import_Widget->close();
}

void DMS_Export_Widget::on_parent_newWebItemNameGetted(const QString &str)
{
    m_webItemName = str;
}

/// The import window has sent that job on its way.
void DMS_Export_Widget::on_m_pDMS_Import_Widget_webJobHaveSent()
{
    m_webItemName.clear();
}

/// Some buttons exist only for some users; what does not exist is not connected.
void DMS_Export_Widget::connectControls()
{
    const struct {
        const QObject *sender;
        const char *signal;
        const char *slot;
    } connections[] = {
        {m_pExportPB, SIGNAL(clicked()), SLOT(on_m_pExportPB_Clicked())},
        {m_pRefreshPB, SIGNAL(clicked()), SLOT(updateExportJobTable())},
        {m_pCreateQuestionPB, SIGNAL(clicked()), SLOT(on_m_pCreateQuestionPB_clicked())},
        {m_pViewQuestionPB, SIGNAL(clicked()), SLOT(on_m_pViewQuestionPB_clicked())},
        {m_pJobPassPB, SIGNAL(clicked()), SLOT(on_m_pJobPassPB_clicked())},
        {m_pJobUnpassPB, SIGNAL(clicked()), SLOT(on_m_pJobUnpassPB_clicked())},
        {m_pFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pFilterLE_textEdited(const QString &))},
        {m_pResolveQuestionPB, SIGNAL(clicked()), SLOT(on_m_pResolveQuestionPB_clicked())},
        {m_pDownloadPB, SIGNAL(clicked()), SLOT(on_m_pDownloadPB_clicked())},
        {DMS_UICommon::interface(), SIGNAL(refreshExportJobTable()), SLOT(updateExportJobTable())},
        {m_pJobTableWidget, SIGNAL(itemClicked(QTableWidgetItem *)),
         SLOT(on_m_pJobTableWidget_ItemClicked(QTableWidgetItem *))},
        {m_pQuestionTableWidget, SIGNAL(itemDoubleClicked(QTableWidgetItem *)),
         SLOT(on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem *))},
        {m_pFilterCMB, SIGNAL(currentIndexChanged(int)),
         SLOT(on_m_pFilterCMB_currentIndexChanged(int))},
        {m_pStatusFilterCMB, SIGNAL(currentIndexChanged(int)),
         SLOT(on_m_pStatusFilterCMB_currentIndexChanged(int))},
        {m_pAssignPB, SIGNAL(clicked()), SLOT(on_m_pAssignPB_clicked())},
        {m_pJobFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pJobFilterLE_textEdited(const QString &))},
        {m_pLayerFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pLayerFilterLE_textEdited(const QString &))},
        {m_pFeatureFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pFeatureFilterLE_textEdited(const QString &))},
        {m_pPrerFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pPrerFilterLE_textEdited(const QString &))},
        {m_pCheckerFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pCheckerFilterLE_textEdited(const QString &))},
        {m_pImputPB, SIGNAL(clicked()), SLOT(on_m_pImputPB_clicked())},
        {m_TurnPage, SIGNAL(currentPageChanged()), SLOT(on_m_TurnPage_currentPageChanged())},
    };

    for (const auto &connection : connections)
        if (connection.sender)
            connect(connection.sender, connection.signal, this, connection.slot);
}

} // namespace KODMS::UI
