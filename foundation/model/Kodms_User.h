// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::DataLib::Model {

/// The signed-in user. All texts are UTF-8.
struct Kodms_User {
    int id = 0; ///< 0 = nobody is signed in
    std::string loginName;
    std::string realName;
    int department = 0; ///< grouping number, see User_View
    int post = 0;       ///< grouping number, see User_View
};

} // namespace KODMS::DataLib::Model
