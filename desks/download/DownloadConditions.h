// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/search/ConditionBuilder.h"

class QString;

namespace KODMS::UI {

/// Items of the search combo over original files, in order. The combo of the
/// order history has the first two only: everything, and the job's name.
struct FileFilter {
    enum : int {
        All,
        OrigName,
        CustomerCode,
        SerialNumber,
        Remark,
        Executor,
        CustomerName,
        CustomerLevelTwo,
        CustomerLevelThree
    };
};

/// What the original-file view is asked for: `text` in the field that the combo
/// names, newest files first. No conditions for a combo without a choice.
void appendFileSearch(ConditionBuilder &conditions, int filterIndex, const QString &text);

/// What the flow view is asked for: flows of the signed-in user that the robot
/// has, had or finished, newest first; `text` counts only when the combo names
/// the job.
void appendHistorySearch(ConditionBuilder &conditions, int filterIndex, const QString &text);

} // namespace KODMS::UI
