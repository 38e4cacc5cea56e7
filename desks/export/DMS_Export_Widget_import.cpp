// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/ImportWindow.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/ui/DMS_Import_Widget.h"

#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char NoImportNeeded[] = "kos格式无需导入";
const QLatin1String Kos("kos");

} // namespace

void DMS_Export_Widget::on_m_pImputPB_clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, JobFlowDesk.noRowMessage);
        return;
    }
    if (cellText(m_pJobTableWidget, row, JobColumn::OrderSuffix) == Kos ||
        cellText(m_pJobTableWidget, row, JobColumn::OrigFileSuffix) == Kos) {
        inform(this, NoImportNeeded);
        return;
    }
    const Import_Info info = importInfo(m_pJobTableWidget, row);
    if (!m_pDMS_Import_Widget) {
        m_pDMS_Import_Widget = new DMS_Import_Widget(nullptr);
        connect(m_pDMS_Import_Widget, SIGNAL(webJobHaveSent()), this,
                SLOT(on_m_pDMS_Import_Widget_webJobHaveSent()));
        m_pDMS_Import_Widget->resize(ImportWindowSize);
    }
    m_pDMS_Import_Widget->show();
    m_pDMS_Import_Widget->setFlowGuid(info);
}

} // namespace KODMS::UI
