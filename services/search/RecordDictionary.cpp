// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/RecordDictionary.h"

#include "services/search/TextTest.h"

#include <utility>

namespace KODMS::Services {

RecordDictionary::Number RecordDictionary::placeOf(Number key)
{
    const auto made = m_places.emplace(key, static_cast<Number>(m_records.size()));
    if (made.second)
        m_records.push_back({key, {}});
    return made.first->second;
}

void RecordDictionary::set(Number key, std::vector<std::string> texts)
{
    m_records[static_cast<std::size_t>(placeOf(key))].texts = std::move(texts);
}

RecordDictionary::Members RecordDictionary::withText(std::size_t text, const TextTest &test) const
{
    Members members(m_records.size());
    for (std::size_t place = 0; place < members.size(); ++place) {
        const std::vector<std::string> &texts = m_records[place].texts;
        members[place] = text < texts.size() && test.matches(texts[text]) ? 1 : 0;
    }
    return members;
}

RecordDictionary::Members RecordDictionary::withKey(Number key) const
{
    Members members(m_records.size());
    const auto known = m_places.find(key);
    if (known != m_places.end())
        members[static_cast<std::size_t>(known->second)] = 1;
    return members;
}

RecordDictionary::Members RecordDictionary::withKeyText(const TextTest &test) const
{
    Members members(m_records.size());
    for (std::size_t place = 0; place < members.size(); ++place)
        members[place] = test.matches(std::to_string(m_records[place].key)) ? 1 : 0;
    return members;
}

std::size_t RecordDictionary::bytes() const
{
    constexpr std::size_t node = sizeof(std::pair<Number, Number>) + 2 * sizeof(void *);
    std::size_t total = m_records.capacity() * sizeof(Entry) + m_places.size() * node;
    for (const Entry &entry : m_records) {
        total += entry.texts.capacity() * sizeof(std::string);
        for (const std::string &text : entry.texts)
            total += text.capacity();
    }
    return total;
}

} // namespace KODMS::Services
