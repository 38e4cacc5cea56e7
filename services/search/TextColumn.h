// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/PackedColumn.h"
#include "services/search/TextBlock.h"

namespace KODMS::Services {

/// Texts of the rows of one segment. Texts that many rows share stand there once.
class TextColumn {
public:
    TextColumn() = default;
    explicit TextColumn(const std::vector<std::string_view> &texts);

    std::string_view at(int row) const;

    /// Of `rows`, keeps those whose text meets the test.
    void keepMatching(const TextTest &test, RowBits &rows) const;

    bool isShared() const { return m_isShared; }

    std::size_t bytes() const { return m_block.bytes() + m_places.bytes(); }

private:
    RowBits meeting(const TextTest &test) const;
    bool share(const std::vector<std::string_view> &texts);

    TextBlock m_block;
    PackedColumn m_places; ///< of each row in the block, when texts are shared
    bool m_isShared = false;
};

} // namespace KODMS::Services
