// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/Odbpp_Flow_View.h"

namespace KODMS::Services {

class SqlQuery;

/// The present row of "select_flow_rows" as the flow view shows it.
DataLib::Model::Odbpp_Flow_View flowViewRow(const SqlQuery &query);

} // namespace KODMS::Services
