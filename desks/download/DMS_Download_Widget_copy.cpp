// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/TableCopy.h"

#include <QCursor>
#include <QMenu>
#include <QTableWidget>

namespace KODMS::UI {

void DMS_Download_Widget::on_m_pJobTableWidget_customContextMenuRequest(const QPoint &)
{
    if (m_pJobTableWidget->currentColumn() < 0 || m_pJobTableWidget->currentRow() < 0)
        return;
    QMenu *menu = makeCopyMenu(m_pJobTableWidget, tr("Copy"), this);
    m_pCurrentItem = m_pJobTableWidget->currentItem();
    menu->exec(QCursor::pos());
}

/// Nothing of the desk asks for this menu; hosts may.
void DMS_Download_Widget::on_m_pJobTableWidget_Header_customContextMenuRequest(const QPoint &)
{
    if (m_pJobTableWidget->currentColumn() != 0)
        return;
    QMenu *menu = makeHeaderMenu(m_pJobTableWidget, tr("Copy"));
    m_pCurrentItem = m_pJobTableWidget->currentItem();
    menu->exec(QCursor::pos());
}

void DMS_Download_Widget::on__copyAct_triggered()
{
    copyToClipboard(selectedCellsText(m_pJobTableWidget));
}

void DMS_Download_Widget::on__copyColumnAct_triggered()
{
    copyToClipboard(currentColumnText(m_pJobTableWidget));
}

void DMS_Download_Widget::on__copyRowAct_triggered()
{
    copyToClipboard(currentRowText(m_pJobTableWidget));
}

void DMS_Download_Widget::on__copyAllAct_triggered()
{
    copyToClipboard(visibleCellsText(m_pJobTableWidget));
}

} // namespace KODMS::UI
