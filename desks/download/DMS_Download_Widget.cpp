// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/DownloadRights.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

namespace KODMS::UI {

DMS_Download_Widget::DMS_Download_Widget(QWidget *parent) : QWidget(parent)
{
    buildSearchControls();
    if (isPrivileged())
        buildForOrigFiles();
    else
        buildForHistory();
    m_pFilterCMB->setCurrentIndex(0);
    buildSearchRow();
    buildAssignRow();
    buildButtons();
    buildButtonRow();
    buildPageBar();
    FillDownloadTableWidget();
    FillAssignerCMB();
    buildMainLayout();
    hideByRole();
    connectControls();
}

DMS_Download_Widget::~DMS_Download_Widget() = default;

void DMS_Download_Widget::connectControls()
{
    const struct {
        const QObject *sender;
        const char *signal;
        const char *slot;
    } connections[] = {
        {DelFile, SIGNAL(clicked()), SLOT(on_DelFile_clicked())},
        {m_pOpenFolderPB, SIGNAL(clicked()), SLOT(on_m_pOpenFileFolder())},
        {m_pDownloadPB, SIGNAL(clicked()), SLOT(on_m_pDownloadPB_Clicked())},
        {m_pRefreshPB, SIGNAL(clicked()), SLOT(updateDownloadJobTable())},
        {m_pUpdateFilePB, SIGNAL(clicked()), SLOT(on_m_pUpdateFilePB_Clicked())},
        {m_pAssignPB, SIGNAL(clicked()), SLOT(on_m_pAssignPB_clicked())},
        {m_pRobotComplete, SIGNAL(clicked()), SLOT(on_m_pRobotComplete_clicked())},
        {m_pRobotImport, SIGNAL(clicked()), SLOT(on_m_pRobotImport_clicked())},
        {m_pFilterLE, SIGNAL(textEdited(const QString &)),
         SLOT(on_m_pFilterLE_textEdited(const QString &))},
        {DMS_UICommon::interface(), SIGNAL(refreshOrigFileTable()), SLOT(updateDownloadJobTable())},
        {m_pFilterCMB, SIGNAL(currentIndexChanged(int)),
         SLOT(on_m_pFilterCMB_currentIndexChanged(int))},
        {m_pJobTableWidget, SIGNAL(customContextMenuRequested(const QPoint &)),
         SLOT(on_m_pJobTableWidget_customContextMenuRequest(const QPoint &))},
        {m_TurnPage, SIGNAL(currentPageChanged()), SLOT(on_m_TurnPage_currentPageChanged())},
    };

    for (const auto &connection : connections)
        connect(connection.sender, connection.signal, this, connection.slot);
}

} // namespace KODMS::UI
