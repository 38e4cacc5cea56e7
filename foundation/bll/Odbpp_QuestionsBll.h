// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/Odbpp_Questions.h"

#include <map>
#include <string>
#include <vector>

namespace KODMS::DataLib::BLL {

/// Questions raised on jobs.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_QuestionsBll {
public:
    /// The questions that meet all conditions, oldest first, for example {"JobId": flow id}.
    bool select(const std::map<std::string, std::string> &textConditions,
                const std::map<std::string, int> &numberConditions,
                std::vector<Model::Odbpp_Questions> &rows);

    /// Sets a question's check flag (0 to 3).
    bool UpdateQuestionStatus(int questionId, int checkFlag, int userId);
};

} // namespace KODMS::DataLib::BLL
