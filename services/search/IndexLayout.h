// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexDictionaries.h"

#include <vector>

namespace KODMS::Services {

class SearchView;

/// Which fields of a view the index holds, and where. The names of columns are those of
/// the statements that read them.
class IndexLayout {
public:
    struct NumberColumn {
        const char *name;
        IndexDictionaries::Kind records = IndexDictionaries::Kind::None; ///< whose key it is
    };

    /// A field of condition lists.
    struct Field {
        enum class Kind {
            Id,
            Number,
            Text,
            Key,       ///< the key of a record of few, in a number column
            RecordText ///< a text of that record
        };

        const char *name;
        Kind kind;
        std::size_t column = 0;
        std::size_t text = 0; ///< place among the texts of the record
    };

    const char *table = nullptr;      ///< whose rows they are
    const char *allRows = nullptr;    ///< statement: every row, in order
    const char *someRows = nullptr;   ///< statement: the rows with some ids
    const char *orderField = nullptr; ///< the field by which the rows are in order
    int changeKind = 0;               ///< in the log of changes
    std::vector<NumberColumn> numbers;
    std::vector<const char *> texts;
    std::vector<Field> fields;

    /// Null when the index does not hold the field.
    const Field *field(const char *name) const;

    static const IndexLayout &of(const SearchView &view);
    static const IndexLayout &flows();
    static const IndexLayout &origFiles();
};

} // namespace KODMS::Services
