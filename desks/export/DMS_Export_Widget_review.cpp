// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QPointer>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

using DataLib::BLL::Odbpp_JobFlowBll;

constexpr char ImportFirst[] = "请先导入odbpp!";

// The check flags that a verdict gives.
constexpr int Failed = 1;
constexpr int Passed = 2;

/// What a selected row says of its job.
struct ReviewedJob {
    int flowId;
    std::string jobName;
    QString origName; ///< empty: nothing was imported yet
    std::string flowGuid;
};

QVector<ReviewedJob> selectedJobs(const QTableWidget *table)
{
    QVector<ReviewedJob> jobs;
    for (int row = 0; row < table->rowCount(); ++row)
        if (isCellSelected(table, row, JobFlowDesk.keyColumn))
            jobs.append({cellText(table, row, JobColumn::Id).toInt(),
                         cellText(table, row, JobColumn::JobName).toStdString(),
                         cellText(table, row, JobColumn::OrigName),
                         cellText(table, row, JobColumn::FlowGuid).toStdString()});
    return jobs;
}

/// A flow that is gone keeps the verdict on its job, without state and time.
void storeVerdict(const ReviewedJob &job, int verdict)
{
    const int userId = DMS_StdCommon::interface()->getCurrentUser().id;
    DataLib::BLL::Odbpp_JobBll().UpdateCheckFlag(userId, verdict, verdict, job.jobName, job.flowId);
    const auto flow = Odbpp_JobFlowBll().getFlowByGuid(job.flowGuid);
    if (!flow.isPersist())
        return;
    Odbpp_JobFlowBll().UpdateState(userId, flow.flowStatus, verdict, job.flowGuid);
    Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, userId, 0, {}, userId, {}, 0, {});
}

} // namespace

void DMS_Export_Widget::on_m_pJobPassPB_clicked()
{
    judgeSelectedJobs(Passed);
}

void DMS_Export_Widget::on_m_pJobUnpassPB_clicked()
{
    judgeSelectedJobs(Failed);
}

/// The rows are read before the first of them has something to say: the message
/// waits in an event loop, in which the table may be filled anew.
void DMS_Export_Widget::judgeSelectedJobs(int verdict)
{
    if (m_pJobTableWidget->currentRow() == -1) {
        inform(this, JobFlowDesk.noRowMessage);
        return;
    }
    if (!checkDownLoadSAuthority())
        return;
    const QPointer<DMS_Export_Widget> stillThere(this);
    const QVector<ReviewedJob> jobs = selectedJobs(m_pJobTableWidget);
    for (const ReviewedJob &job : jobs) {
        if (!job.origName.isEmpty())
            storeVerdict(job, verdict);
        else
            inform(this, ImportFirst);
        if (!stillThere)
            return;
    }
    DMS_UICommon::interface()->emitGobalSingal();
    if (stillThere)
        updateExportJobTable();
}

} // namespace KODMS::UI
