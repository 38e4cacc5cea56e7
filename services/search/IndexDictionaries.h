// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/RecordDictionary.h"

namespace KODMS::Services {

/// The records of few that rows of both views name.
class IndexDictionaries {
public:
    enum class Kind { None, People, Customers };

    RecordDictionary &of(Kind kind) { return kind == Kind::People ? m_people : m_customers; }

    const RecordDictionary &of(Kind kind) const
    {
        return kind == Kind::People ? m_people : m_customers;
    }

    std::size_t bytes() const { return m_people.bytes() + m_customers.bytes(); }

private:
    RecordDictionary m_people;
    RecordDictionary m_customers;
};

} // namespace KODMS::Services
