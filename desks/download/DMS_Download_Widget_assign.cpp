// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/AssignAction.h"
#include "desks/common/AssigneeCombo.h"

namespace KODMS::UI {

void DMS_Download_Widget::FillAssignerCMB()
{
    fillAssignees(m_pAssignerCMB, m_AssignerIds, OrigFileDesk.assignees);
}

void DMS_Download_Widget::on_m_pAssignPB_clicked()
{
    const AssignAction action(this, OrigFileDesk, m_pJobTableWidget, m_pAssignerCMB, m_AssignerIds);
    if (action.assign())
        action.refill(m_EmptyText, [this] { updateDownloadJobTable(); });
}

} // namespace KODMS::UI
