// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextColumn.h"

#include "services/search/TextTest.h"

#include <unordered_map>

namespace KODMS::Services {

namespace {

/// Texts are shared when there are at least so many rows to each.
constexpr std::size_t rowsToShare = 4;

/// Fewer rows than one in so many are looked at one by one.
constexpr int rowsToScan = 32;

} // namespace

TextColumn::TextColumn(const std::vector<std::string_view> &texts)
{
    if (!share(texts))
        m_block = TextBlock(texts);
}

bool TextColumn::share(const std::vector<std::string_view> &texts)
{
    const std::size_t most = texts.size() / rowsToShare;
    std::unordered_map<std::string_view, PackedColumn::Number> known;
    std::vector<std::string_view> different;
    std::vector<PackedColumn::Number> places;
    places.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto made = known.emplace(text, static_cast<PackedColumn::Number>(different.size()));
        if (made.second)
            different.push_back(text);
        if (different.size() > most)
            return false;
        places.push_back(made.first->second);
    }
    m_block = TextBlock(different);
    m_places = PackedColumn(places);
    m_isShared = true;
    return true;
}

std::string_view TextColumn::at(int row) const
{
    return m_block.at(m_isShared ? static_cast<int>(m_places.at(row)) : row);
}

void TextColumn::keepMatching(const TextTest &test, RowBits &rows) const
{
    if (m_isShared) {
        std::vector<std::uint8_t> members(static_cast<std::size_t>(m_block.size()));
        for (std::size_t place = 0; place < members.size(); ++place)
            members[place] = test.matches(m_block.at(static_cast<int>(place))) ? 1 : 0;
        m_places.keepMembers(members, rows);
        return;
    }
    const bool scans =
        test.kind() == TextTest::Kind::Contains && rows.count() > m_block.size() / rowsToScan;
    if (scans) {
        rows.keep(m_block.containing(test));
        return;
    }
    RowBits kept;
    rows.forEach([&](int row) {
        if (test.matches(m_block.at(row)))
            kept.add(row);
    });
    rows = kept;
}

} // namespace KODMS::Services
