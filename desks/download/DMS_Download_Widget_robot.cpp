// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/FlowRow.h"
#include "desks/common/ImportWindow.h"
#include "desks/common/JobColumns.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/ui/DMS_Import_Widget.h"

#include <QDebug>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char WrongStatus[] = "所选项状态不合法！";
constexpr int RobotResult = 1; // mode of the import window

} // namespace

/// Its button is never shown.
void DMS_Download_Widget::on_m_pRobotComplete_clicked()
{
    if (m_pJobTableWidget->currentRow() == -1)
        inform(this, OrigFileDesk.noRowMessage);
}

/// Imports the robot's passed result of a job again. Its button is there only for
/// users with the order history.
void DMS_Download_Widget::on_m_pRobotImport_clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, OrigFileDesk.noRowMessage);
        return;
    }
    const QString status = cellText(m_pJobTableWidget, row, JobColumn::Status);
    qDebug().noquote() << status;
    if (status.toLocal8Bit() != shownStatus(2, 2).toLocal8Bit()) {
        inform(this, WrongStatus);
        return;
    }
    Import_Info info = importInfo(m_pJobTableWidget, row);
    if (!info.isWeb)
        info.uuid.clear();
    showImportWindow();
    m_pImportWidget->setFlowGuid(info);
}

/// The window belongs to what the host has put the desk into, and may go with it
/// while the desk lives on elsewhere.
void DMS_Download_Widget::showImportWindow()
{
    if (!m_pImportWidget) {
        QWidget *place = parentWidget();
        m_pImportWidget =
            new DMS_Import_Widget(RobotResult, place ? place->parentWidget() : nullptr);
        connect(m_pImportWidget, SIGNAL(robotImportComplete()), this,
                SLOT(on_m_pRobotImport_robotImportComplete()));
        m_pImportWidget->resize(ImportWindowSize);
    }
    if (m_pImportWidget->isVisible())
        m_pImportWidget->raise();
    m_pImportWidget->show();
}

void DMS_Download_Widget::on_m_pRobotImport_robotImportComplete()
{
    on_m_pDownloadPB_Clicked();
}

} // namespace KODMS::UI
