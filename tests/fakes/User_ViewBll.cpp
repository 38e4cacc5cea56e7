// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/User_ViewBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool User_ViewBll::select(const std::map<std::string, std::string> &textConditions,
                          const std::map<std::string, int> &numberConditions,
                          std::vector<Model::User_View> &rows)
{
    auto &services = FakeServices::instance();
    auto found = services.users.take(
        services.record("User_ViewBll::select", textConditions, numberConditions));
    rows.insert(rows.end(), found.rows.begin(), found.rows.end());
    return found.ok;
}

} // namespace KODMS::DataLib::BLL
