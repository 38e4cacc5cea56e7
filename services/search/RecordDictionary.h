// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/PackedColumn.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace KODMS::Services {

class TextTest;

/// Records of few that rows name by key (people, customers): a row holds the place,
/// a condition asks each record once.
class RecordDictionary {
public:
    using Number = PackedColumn::Number;
    /// A byte for each place: 1 where the record is meant.
    using Members = std::vector<std::uint8_t>;

    /// Place of the record with this key; a new one has no texts and meets no test of them.
    Number placeOf(Number key);

    /// Sets all texts of a record, in the dictionary's own order.
    void set(Number key, std::vector<std::string> texts);

    Members withText(std::size_t text, const TextTest &test) const;
    Members withKey(Number key) const;
    /// Records whose key in decimal digits meets the test.
    Members withKeyText(const TextTest &test) const;

    std::size_t size() const { return m_records.size(); }

    std::size_t bytes() const;

private:
    struct Entry {
        Number key;
        std::vector<std::string> texts;
    };

    std::vector<Entry> m_records;
    std::unordered_map<Number, Number> m_places;
};

} // namespace KODMS::Services
