// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI {

/// Columns of the table of original files. The struct gives the plain
/// enumerators, which are used as numbers, a scope.
struct OrigFileColumn {
    enum : int {
        OrigName,
        CustomerName,
        CustomerCode,
        FileType,
        SerialNumber,
        Uuid,
        Id,
        Description,
        Remark,
        FlowGuid,
        CustomerLevelTwo,
        CustomerLevelThree,
        UpdateTime,
        CreateTime,
        Executor,
        ExecutorId,
        Count
    };
};

} // namespace KODMS::UI
