// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_QuestionsBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_QuestionsBll::select(const std::map<std::string, std::string> &textConditions,
                                const std::map<std::string, int> &numberConditions,
                                std::vector<Model::Odbpp_Questions> &rows)
{
    auto &services = FakeServices::instance();
    auto found = services.questions.take(
        services.record("Odbpp_QuestionsBll::select", textConditions, numberConditions));
    rows.insert(rows.end(), found.rows.begin(), found.rows.end());
    return found.ok;
}

bool Odbpp_QuestionsBll::UpdateQuestionStatus(int questionId, int checkFlag, int userId)
{
    return FakeServices::instance().answer("Odbpp_QuestionsBll::UpdateQuestionStatus", questionId,
                                           checkFlag, userId) != 0;
}

} // namespace KODMS::DataLib::BLL
