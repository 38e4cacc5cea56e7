// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Services {

/// One field of a view that condition lists may name. Plain texts with static
/// storage; the white list is made of these.
struct ViewField {
    enum class Kind { Text, Number };

    const char *name;   ///< as in condition lists
    Kind kind;          ///< numbers are compared as numbers, and shown in decimal
    const char *column; ///< where it stands, for example "f.job_name"
    unsigned tables;    ///< joined tables that `column` needs, one bit each
    int largest = -1;   ///< the schema admits only 0 to this number; -1: any

    /// An index walk that gives the ids of the rows with one value, without the
    /// comparison at its end: "SELECT id FROM job_flows WHERE create_user_id".
    /// For a field with a dimension, with the dimension's key in place of the value.
    const char *walk = nullptr;

    /// For a text that few records share among many rows (people, customers): the
    /// text is looked up there first, and the rows are asked for the key alone.
    const char *dimension = nullptr; ///< "users", "customers"; null: none
    const char *dimensionColumn = nullptr;
    const char *key = nullptr; ///< column of the row that names the record
    unsigned keyTables = 0;    ///< joined tables that `key` needs

    /// For a number that the index of the desk's order does not hold: the keys of the
    /// rows that have one value, again without the comparison, and the row's own column
    /// to look for among them. A set that was read once answers faster than the table.
    const char *set = nullptr;
    const char *setColumn = nullptr;

    /// An order by it can follow an index, on whichever end an engine puts nulls.
    bool isNeverNull = false;
};

} // namespace KODMS::Services
