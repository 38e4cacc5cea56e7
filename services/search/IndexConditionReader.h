// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"
#include "services/search/IndexCondition.h"
#include "services/search/IndexLayout.h"

#include <optional>

namespace KODMS::Services {

/// Says a condition in the index's terms: fields become columns, people and customers
/// are asked once and become sets of places.
class IndexConditionReader {
public:
    IndexConditionReader(const IndexLayout &layout, const IndexDictionaries &dictionaries)
        : m_layout(layout), m_dictionaries(dictionaries)
    {
    }

    /// Nothing when the condition names a field that the index does not hold.
    std::optional<IndexCondition> read(const Condition &condition) const;

private:
    std::optional<IndexCondition> group(const Condition &condition) const;
    std::optional<IndexCondition> test(const Condition &condition) const;
    IndexCondition numberTest(const Condition &condition, const IndexLayout::Field &field) const;
    IndexCondition recordTest(const Condition &condition, const IndexLayout::Field &field) const;

    const IndexLayout &m_layout;
    const IndexDictionaries &m_dictionaries;
};

} // namespace KODMS::Services
