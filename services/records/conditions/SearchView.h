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

    const char *name = nullptr;  ///< for the log
    const char *table = nullptr; ///< "job_flows f"
    const char *id = nullptr;    ///< "f.id"
    std::vector<Join> joins;

    /// The two fields of the pair that says how far a flow has come, the pair as one
    /// number (status * 4 + flag), and the index walk to it. The column is written so
    /// that it does not match the index: a search takes the walk only on purpose.
    /// Null: the view has no such fields.
    const char *status = nullptr;
    const char *flag = nullptr;
    const char *state = nullptr;
    const char *stateWalk = nullptr;

    std::vector<ViewField> fields;

    /// Null when the view has no field of that name.
    const ViewField *field(const std::string &fieldName) const;

    /// `tables` and all that they are joined to.
    unsigned closure(unsigned tables) const;

    static const SearchView &flows();
    static const SearchView &origFiles();
};

} // namespace KODMS::Services
