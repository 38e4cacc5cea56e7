// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_Flow_ViewBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_Flow_ViewBll::selectAndCountBySearchModel(std::vector<Model::DB_Search> &conditions,
                                                     std::vector<Model::DB_Search> &countConditions,
                                                     std::vector<Model::Odbpp_Flow_View> &rows,
                                                     int &totalCount)
{
    auto &services = FakeServices::instance();
    auto page = services.flowPages.take(services.record(
        "Odbpp_Flow_ViewBll::selectAndCountBySearchModel", conditions, countConditions));
    rows.insert(rows.end(), page.rows.begin(), page.rows.end());
    totalCount = page.total;
    return page.ok;
}

} // namespace KODMS::DataLib::BLL
