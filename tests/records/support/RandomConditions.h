// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"
#include "tests/records/support/SearchOracle.h"

#include <QRandomGenerator>

namespace KODMS::Tests {

/// Makes well-formed condition lists of every shape: brackets, both joins, both
/// matches, values taken from the data, values that are in no data, repeated and
/// differing sort records, page windows. Same seed, same lists.
class RandomConditions {
public:
    RandomConditions(const SearchOracle &oracle, quint32 seed) : m_oracle(oracle), m_random(seed) {}

    SearchOracle::List list();
    Services::Actor actor();
    void addPage(SearchOracle::List &list);

private:
    SearchOracle::Record record();
    std::string value(const QString &field);
    void addBrackets(SearchOracle::List &list);
    void addOrder(SearchOracle::List &list);

    const SearchOracle &m_oracle;
    QRandomGenerator m_random;
};

} // namespace KODMS::Tests
