// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"
#include "tests/records/support/SearchOracle.h"

#include <QRandomGenerator>

namespace KODMS::Tests {

/// Makes well-formed condition lists of every shape: brackets, both joins, both
/// matches, values taken from the data, values that are in no data, repeated and
/// differing sort records, page windows, now and then bytes that are no text, of which the
/// log warns. Same seed, same lists.
class RandomConditions {
public:
    RandomConditions(const SearchOracle &oracle, quint32 seed)
        : RandomConditions(oracle, seed, oracle.fields(), oracle.fields())
    {
    }

    /// Lists that name only these fields, ordered by one of `orders`.
    RandomConditions(const SearchOracle &oracle, quint32 seed, const QStringList &fields,
                     const QStringList &orders)
        : m_oracle(oracle), m_random(seed), m_fields(fields), m_orders(orders)
    {
    }

    SearchOracle::List list();
    Services::Actor actor();
    void addPage(SearchOracle::List &list);

private:
    SearchOracle::Record record();
    std::string value(const QString &field);
    std::string noText();
    void addBrackets(SearchOracle::List &list);
    void addOrder(SearchOracle::List &list);

    const SearchOracle &m_oracle;
    QRandomGenerator m_random;
    QStringList m_fields;
    QStringList m_orders;
};

} // namespace KODMS::Tests
