// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QPair>
#include <QPointer>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char SelectRow[] = "请选择一行数据";
constexpr char ConfirmExport[] = "确认导出选择的job？";
constexpr char Exported[] = "导出  成功"; // with two blanks, as hosts know it

/// Name and flow id of the selected jobs.
QVector<QPair<QString, int>> selectedJobs(const QTableWidget *table)
{
    QVector<QPair<QString, int>> jobs;
    for (int row = 0; row < table->rowCount(); ++row)
        if (isCellSelected(table, row, JobFlowDesk.keyColumn))
            jobs.append({cellText(table, row, JobColumn::JobName),
                         cellText(table, row, JobColumn::Id).toInt()});
    return jobs;
}

} // namespace

/// The jobs are those that are selected when the question is asked.
void DMS_Export_Widget::on_m_pExportPB_Clicked()
{
    if (m_pJobTableWidget->currentRow() == -1) {
        inform(this, SelectRow);
        return;
    }
    const auto jobs = selectedJobs(m_pJobTableWidget);
    if (!confirm(this, ConfirmExport, QMessageBox::Yes | QMessageBox::Cancel))
        return;
    const QPointer<DMS_Export_Widget> stillThere(this);
    for (const auto &job : jobs) {
        Q_EMIT emitExportJobInfo(job.first, job.second);
        DMS_UICommon::interface()->sendemitCAMExportJobInfo(job.first, job.second);
        if (!stillThere)
            return;
    }
    inform(this, Exported);
}

} // namespace KODMS::UI
