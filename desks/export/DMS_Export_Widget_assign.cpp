// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/AssignAction.h"
#include "desks/common/AssigneeCombo.h"

namespace KODMS::UI {

void DMS_Export_Widget::FillAssignerCMB()
{
    fillAssignees(m_pAssignerCMB, m_AssignerIds, JobFlowDesk.assignees);
}

void DMS_Export_Widget::on_m_pAssignPB_clicked()
{
    const AssignAction action(this, JobFlowDesk, m_pJobTableWidget, m_pAssignerCMB, m_AssignerIds);
    if (action.assign())
        action.refill(m_LocateJobName, [this] { updateExportJobTable(); });
}

} // namespace KODMS::UI
