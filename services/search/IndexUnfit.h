// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

namespace KODMS::Services {

/// A record holds something that the index cannot: a number column with a text, a time
/// that is none. The statements answer then.
class IndexUnfit : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace KODMS::Services
