// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/ViewField.h"

#include <string>
#include <vector>

namespace KODMS::Services {

/// One searchable view: its rows' table, the tables that can be joined to it, and
/// the white list of its fields.
class SearchView {
public:
    struct Join {
        unsigned bit;
        unsigned needs; ///< bits of the tables that this one is joined to
        const char *clause;
    };

    const char *name;  ///< for the log
    const char *table; ///< "job_flows f"
    const char *id;    ///< "f.id"
    std::vector<Join> joins;
    std::vector<ViewField> fields;

    /// Null when the view has no field of that name.
    const ViewField *field(const std::string &fieldName) const;

    /// `tables` and all that they are joined to.
    unsigned closure(unsigned tables) const;

    static const SearchView &flows();
    static const SearchView &origFiles();
};

} // namespace KODMS::Services
