// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexCondition.h"
#include "services/search/IndexTable.h"

#include <vector>

namespace KODMS::Services {

/// Pages and counts of a table of the index.
class TableSearch {
public:
    enum class Order { Time, Id };

    struct Window {
        Order order = Order::Id;
        bool isDescending = false;
        std::int64_t offset = 0;
        std::int64_t size = 0;
    };

    explicit TableSearch(const IndexTable &table) : m_table(table) {}

    /// Looks at every row once; then count() and ids() say what was found.
    void run(const IndexCondition &condition, const Window &window);

    std::int64_t count() const { return m_count; }

    /// Of the rows in the window, in order.
    const std::vector<PackedColumn::Number> &ids() const { return m_ids; }

private:
    void visit(const IndexSegment &segment, const RowBits &rows, const Window &window);
    void take(const IndexSegment &segment, const RowBits &rows, const Window &window);
    void takeAll(const IndexSegment &segment, const RowBits &rows);
    void cutOut(const Window &window);

    const IndexTable &m_table;
    std::int64_t m_count = 0;
    std::vector<PackedColumn::Number> m_ids;
};

} // namespace KODMS::Services
