// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlQuery.h"
#include "services/search/IndexLayout.h"
#include "services/search/IndexRow.h"

#include <optional>
#include <vector>

namespace KODMS::Services {

/// Reads rows of one of the layout's statements for the index.
class IndexRowReader {
public:
    /// `query` has been executed and outlives the reader.
    IndexRowReader(const IndexLayout &layout, const SqlQuery &query);

    /// The row at which the query is. Records that it names get their places. Throws
    /// IndexUnfit.
    IndexRow read(IndexDictionaries &dictionaries) const;

    /// A text of the query as the index holds it; nothing when it cannot.
    static std::optional<std::string> textOf(const QVariant &value);

private:
    /// A text or number of the row; throws IndexUnfit.
    std::string textAt(int place, PackedColumn::Number row, const char *column) const;
    PackedColumn::Number numberAt(int place, PackedColumn::Number row, const char *column) const;

    const IndexLayout &m_layout;
    const SqlQuery &m_query;
    int m_id;
    int m_time;
    std::vector<int> m_numbers;
    std::vector<int> m_texts;
};

} // namespace KODMS::Services
