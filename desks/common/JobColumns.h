// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI {

/// Columns of a table of job flows: the job-flow desk and the order history.
/// The struct gives the plain enumerators, which are used as numbers, a scope.
struct JobColumn {
    enum : int {
        Id,
        JobName,
        OrigName,
        UploadTime,
        LayerCount,
        FeatureCount,
        Status,
        PreCheckTime,
        FlowGuid,
        PreProcessor,
        PreChecker,
        PreCheckerId,
        Remark,
        Uuid,
        WebFlag,
        OrderSuffix,
        OrigFileSuffix,
        BatchNumber,
        Count
    };
};

/// Columns of the table of a job's questions.
struct QuestionColumn {
    enum : int { Id, Title, Description, Status, Count };
};

} // namespace KODMS::UI
