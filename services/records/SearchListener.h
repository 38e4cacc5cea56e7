// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"

#include <vector>

namespace KODMS::Services {

class SearchView;

/// Learns what the view services are asked for. In the thread of the records.
class SearchListener {
public:
    virtual ~SearchListener() = default;

    /// Before the search is made, and whatever becomes of it.
    virtual void searching(const SearchView &view,
                           const std::vector<DataLib::Model::DB_Search> &conditions) = 0;
};

} // namespace KODMS::Services
