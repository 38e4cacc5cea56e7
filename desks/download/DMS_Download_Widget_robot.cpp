// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/MessageBoxes.h"

#include <QTableWidget>

namespace KODMS::UI {

/// Its button is never shown.
void DMS_Download_Widget::on_m_pRobotComplete_clicked()
{
    if (m_pJobTableWidget->currentRow() == -1)
        inform(this, OrigFileDesk.noRowMessage);
}

void DMS_Download_Widget::on_m_pRobotImport_robotImportComplete()
{
    on_m_pDownloadPB_Clicked();
}

} // namespace KODMS::UI
