// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/CamRobotRequest.h"
#include "desks/common/DeskOperations.h"
#include "desks/common/FlowRow.h"
#include "desks/common/JobColumns.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/OrderPayment.h"
#include "desks/common/TableHelpers.h"
#include "desks/common/WebJob.h"

#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char NotReadyForRobot[] = "此流程状态未到机器人处理";

/// A passed pre-processing, or another try after a failed robot result.
bool isReadyForRobot(const QString &status)
{
    return status == shownStatus(1, 2) || status == shownStatus(2, 1);
}

} // namespace

void DMS_Export_Widget::execCAMRobot()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, JobFlowDesk.noRowMessage);
        return;
    }
    const QString jobName = cellText(m_pJobTableWidget, row, JobColumn::JobName);
    const bool fromWeb = isWebJob(jobName);
    if (fromWeb && !isOrderPaid(cellText(m_pJobTableWidget, row, JobColumn::FlowGuid))) {
        inform(this, OrderUnpaid);
        return;
    }
    if (!isReadyForRobot(cellText(m_pJobTableWidget, row, JobColumn::Status))) {
        inform(this, NotReadyForRobot);
        return;
    }
    CamRobotRequest(jobName, fromWeb).send();
}

} // namespace KODMS::UI
