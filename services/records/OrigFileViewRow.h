// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/Odbpp_OrigFile_View.h"

namespace KODMS::Services {

class SqlQuery;

/// The present row of "select_orig_file_rows" as the original-file view shows it.
DataLib::Model::Odbpp_OrigFile_View origFileViewRow(const SqlQuery &query);

} // namespace KODMS::Services
