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
constexpr int rowsToScan = 5;

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

/// The texts of the block, not the rows.
RowBits TextColumn::meeting(const TextTest &test) const
{
    if (test.kind() == TextTest::Kind::Contains)
        return m_block.containing(test);
    RowBits found;
    for (int place = 0; place < m_block.size(); ++place) {
        if (test.matches(m_block.at(place)))
            found.add(place);
    }
    return found;
}

void TextColumn::keepMatching(const TextTest &test, RowBits &rows) const
{
    if (m_isShared) {
        const RowBits found = meeting(test);
        std::vector<std::uint8_t> members(static_cast<std::size_t>(m_block.size()));
        found.forEach([&members](int place) { members[static_cast<std::size_t>(place)] = 1; });
        m_places.keepMembers(members, rows);
        return;
    }
    if (rows.count() > m_block.size() / rowsToScan) {
        rows.keep(meeting(test));
        return;
    }
    if (test.kind() == TextTest::Kind::Contains) {
        rows = m_block.containing(test, rows);
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
