// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/AssigneeCombo.h"
#include "desks/common/AssignmentServices.h"
#include "desks/common/JobColumns.h"
#include "desks/common/OrigFileColumns.h"

namespace KODMS::UI {

/// What the two desks do differently in the operations that they share. Each
/// operation is written once and asks the table of the desk that it works for.
struct DeskOperations {
    // Columns of the job table. They are numbers, because each desk has its own
    // enumeration of them.
    int keyColumn;       ///< a selected cell here selects the row; names the row in messages
    int jobNameColumn;   ///< download: the job as the table names it
    int fileColumn;      ///< download: the stored file
    int fileTypeColumn;  ///< download, selection: what kind of archive it is
    int flowColumn;      ///< GUID of the job's flow
    int originColumn;    ///< download: "web" when the job came from the web
    int orderFlowColumn; ///< download: GUID of the flow whose order has to be paid
    int archiveColumn;   ///< download: "tgz" when the job is a tgz archive
    int ownerColumn;     ///< download rights: user id of the one who may download
    int assigneeColumn;  ///< assignment: who has the row, if anybody
    int fileIdColumn;    ///< assignment: id of the original file; -1: rows are no files
    int reselectColumn;  ///< assignment: the text by which a row is found again

    // Selection and rights.
    bool foldsTypeCase;     ///< selection: "TGZ" counts as "tgz"
    bool updatersMayGetAny; ///< download rights: so do all users who may replace files

    // Download.
    const char *noRowMessage;
    bool finishesForOthers; ///< without a view of all files, the button ends the flow instead
    bool checksOwner;       ///< only who may download every selected row goes on
    bool needsFlowGuid;     ///< a row without a flow ends the download

    // Assignment.
    AssigneeGroup assignees; ///< who can be picked
    bool (*mayAssign)();
    void (*assign)(const AssignedRow &row);   ///< a row that nobody has
    void (*reassign)(const AssignedRow &row); ///< a row that somebody has
};

enum class Desk { JobFlow, OrigFile };

/// Picks one of a pair: what the job-flow desk does, what the original-file desk does.
struct OfDesk {
    Desk desk;

    template <typename Value> constexpr Value operator()(Value jobFlow, Value origFile) const
    {
        return desk == Desk::JobFlow ? jobFlow : origFile;
    }

    constexpr int operator()(int jobFlow, int origFile) const
    {
        return desk == Desk::JobFlow ? jobFlow : origFile;
    }
};

// clang-format off
/// The two desks side by side.
constexpr DeskOperations operationsOf(Desk desk)
{
    const OfDesk of{desk};
    DeskOperations its{};

    //                         job-flow desk               original-file desk
    its.keyColumn         = of(JobColumn::Id,              OrigFileColumn::OrigName);
    its.jobNameColumn     = of(JobColumn::JobName,         OrigFileColumn::OrigName);
    its.fileColumn        = of(JobColumn::Uuid,            OrigFileColumn::Uuid);
    its.fileTypeColumn    = of(JobColumn::OrigFileSuffix,  OrigFileColumn::FileType);
    its.flowColumn        = of(JobColumn::FlowGuid,        OrigFileColumn::FlowGuid);
    its.ownerColumn       = of(JobColumn::PreCheckerId,    OrigFileColumn::ExecutorId);

    // Both desks ask the same three columns, those in which the original-file desk
    // shows customer code, flow and file type. A flow's row has other texts there,
    // and a download goes by them all the same: what may be fetched unpaid, and what
    // is handed over as a job file and what as a folder, rests on it.
    its.originColumn      = of(JobColumn::OrigName,        OrigFileColumn::CustomerCode);
    its.orderFlowColumn   = of(JobColumn::PreProcessor,    OrigFileColumn::FlowGuid);
    its.archiveColumn     = of(JobColumn::UploadTime,      OrigFileColumn::FileType);

    its.foldsTypeCase     = of(true,                       false);
    its.updatersMayGetAny = of(false,                      true);

    its.noRowMessage      = of("请选择一个料号",             "请选择一行数据");
    its.finishesForOthers = of(false,                      true);
    its.checksOwner       = of(false,                      true);
    its.needsFlowGuid     = of(true,                       false);

    its.assigneeColumn    = of(JobColumn::PreChecker,      OrigFileColumn::Executor);
    its.fileIdColumn      = of(-1,                         OrigFileColumn::Id);
    its.reselectColumn    = of(JobColumn::Id,              OrigFileColumn::FlowGuid);
    its.assignees         = of(PreCheckers,                Executors);
    its.mayAssign         = of(mayAssignPreCheckers,       mayAssignExecutors);
    its.assign            = of(assignPreChecker,           assignExecutor);
    its.reassign          = of(reassignPreChecker,         reassignExecutor);
    return its;
}

// clang-format on

constexpr DeskOperations JobFlowDesk = operationsOf(Desk::JobFlow);
constexpr DeskOperations OrigFileDesk = operationsOf(Desk::OrigFile);

} // namespace KODMS::UI
