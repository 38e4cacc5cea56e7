// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/DB_Search.h"
#include "foundation/model/Odbpp_OrigFile_View.h"

#include <vector>

namespace KODMS::DataLib::BLL {

/// Searches the original files.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_OrigFile_ViewBll {
public:
    /// Runs one query: `conditions` (with order and page window) gives `rows`,
    /// `countConditions` gives `totalCount`, the number of rows of all pages.
    /// What the signed-in user may not see is left out, whatever the lists say.
    /// Nothing found: true, no rows, 0. Unknown field or unbalanced brackets: false.
    bool selectAndCountBySearchModel(std::vector<Model::DB_Search> &conditions,
                                     std::vector<Model::DB_Search> &countConditions,
                                     std::vector<Model::Odbpp_OrigFile_View> &rows,
                                     int &totalCount);
};

} // namespace KODMS::DataLib::BLL
