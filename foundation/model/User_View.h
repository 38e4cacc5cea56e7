// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::DataLib::Model {

/// One user, for the assignee combo boxes.
struct User_View {
    int id = 0;
    std::string realName;
    int department = 0; ///< 3 = pre-check, 2 = pre-process
    int post = 0;       ///< 10 = pre-checker, 6 = executor
};

} // namespace KODMS::DataLib::Model
