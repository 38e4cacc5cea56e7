// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ImportWindow.h"

#include "desks/common/JobColumns.h"
#include "desks/common/TableHelpers.h"
#include "desks/common/WebJob.h"

namespace KODMS::UI {

Import_Info importInfo(const QTableWidget *table, int row)
{
    const QString jobName = cellText(table, row, JobColumn::JobName);
    return {jobNamePrefix(jobName),
            jobName,
            cellText(table, row, JobColumn::OrigName),
            cellText(table, row, JobColumn::FlowGuid),
            isWebJob(jobName),
            cellText(table, row, JobColumn::Uuid)};
}

} // namespace KODMS::UI
