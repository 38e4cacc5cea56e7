// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/RandomConditions.h"

#include "tests/records/support/RandomRecords.h"

namespace KODMS::Tests {

/// Halves of a surrogate pair, characters cut off, NUL.
std::string RandomConditions::noText()
{
    static const std::vector<std::string> texts{"\xed\xa0\x80", "a\xed\xb0\x80",
                                                "\xe5\x9c",     "\xf0\x9f\x98\x80\xf0\x9f",
                                                "\xff",         std::string("a\0", 2)};
    return texts[static_cast<std::size_t>(m_random.bounded(static_cast<int>(texts.size())))];
}

std::string RandomConditions::value(const QString &field)
{
    if (m_random.bounded(50) == 0)
        return noText();
    const int kind = m_random.bounded(10);
    if (kind == 0)
        return {};
    if (kind == 1)
        return std::to_string(m_random.bounded(15));
    if (kind == 2)
        return RandomRecords::awkwardText(m_random).toStdString();
    const auto &row = m_oracle.rows().at(m_random.bounded(m_oracle.rows().size()));
    QString text = row.value(field).toString();
    if (kind < 8 && text.size() > 1) {
        const int start = m_random.bounded(text.size());
        text = text.mid(start, 1 + m_random.bounded(3));
    }
    if (kind % 2 == 0)
        text = text.toUpper();
    if (kind == 9 && m_random.bounded(4) == 0)
        text += QStringLiteral(".0");
    return text.toStdString();
}

SearchOracle::Record RandomConditions::record()
{
    SearchOracle::Record record;
    const QString field = m_fields.at(m_random.bounded(m_fields.size()));
    record.fieldName = field.toStdString();
    record.value = value(field);
    record.fuzzy = m_random.bounded(3) > 0 ? 1 : 0;
    record.orWithPrevious = m_random.bounded(2);
    record.numericValue = m_random.bounded(8) == 0 ? 1 : 0;
    return record;
}

void RandomConditions::addBrackets(SearchOracle::List &list)
{
    int open = 0;
    for (SearchOracle::Record &record : list) {
        if (m_random.bounded(3) == 0) {
            record.openBracket = 1;
            ++open;
        }
        if (open > 0 && m_random.bounded(3) == 0) {
            record.closeBracket = 2;
            --open;
        }
    }
    for (; open > 0; --open) {
        SearchOracle::Record last = record();
        last.closeBracket = 2;
        list.push_back(last);
    }
}

void RandomConditions::addOrder(SearchOracle::List &list)
{
    SearchOracle::Record order = list.empty() ? record() : list.back();
    if (list.empty())
        order.openBracket = order.closeBracket = 0;
    const int kind = m_random.bounded(4);
    if (kind == 0)
        order.fuzzy = 1 - order.fuzzy;
    if (kind == 1)
        order.orWithPrevious = 1 - order.orWithPrevious;
    if (kind == 2)
        order.value += "x";
    const bool isRepetition = kind == 0 || kind == 3;
    if (!isRepetition)
        order.openBracket = order.closeBracket = 0; // applied, so it has to balance
    order.sortEnabled = 1;
    order.sortDirection = m_random.bounded(2);
    order.sortField = m_orders.at(m_random.bounded(m_orders.size())).toStdString();
    list.push_back(order);
}

SearchOracle::List RandomConditions::list()
{
    SearchOracle::List list;
    const int size = m_random.bounded(8);
    for (int i = 0; i < size; ++i)
        list.push_back(record());
    addBrackets(list);
    if (m_random.bounded(3) > 0)
        addOrder(list);
    return list;
}

void RandomConditions::addPage(SearchOracle::List &list)
{
    if (list.empty())
        return;
    list.back().pageEnabled = 1;
    list.back().pageStart = std::to_string(m_random.bounded(4) * 30);
    list.back().pageSize = std::to_string(m_random.bounded(4) == 0 ? 7 : 30);
}

Services::Actor RandomConditions::actor()
{
    using Services::Role;
    Services::Actor actor;
    actor.userId = 1 + m_random.bounded(RandomRecords::users);
    const int kind = m_random.bounded(5);
    if (kind < 2)
        actor.roles.insert(Role::Admin);
    if (kind == 2)
        actor.roles.insert(Role::TestAdmin);
    if (kind == 3)
        actor.roles.insert(Role::ShowCompanyName);
    return actor;
}

} // namespace KODMS::Tests
