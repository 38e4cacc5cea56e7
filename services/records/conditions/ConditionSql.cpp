// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/ConditionSql.h"

#include "services/records/Dialect.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

/// Links of one chain: a chain makes the expression tree as deep as it is long, so
/// long ones become chains of chains.
constexpr int longestChain = 50;

bool isSameDimension(const ViewField *a, const ViewField *b)
{
    return a->dimension != nullptr && b->dimension != nullptr && qstrcmp(a->key, b->key) == 0;
}

/// What asking one row costs, roughly: numbers first, then keys, then texts, then
/// what another table has to be read for.
int costOf(const Condition &condition)
{
    if (condition.kind != Condition::Kind::Test) {
        int cost = 0;
        for (const Condition &child : condition.children)
            cost += costOf(child);
        return cost;
    }
    const ViewField *field = condition.field;
    const bool isNumber = condition.match == Condition::Match::EqualNumber;
    const int compare = isNumber || field->dimension != nullptr ? 1 : 3;
    const unsigned tables = field->dimension != nullptr ? field->keyTables : field->tables;
    return tables == 0 ? compare : compare + 5;
}

} // namespace

const ViewField *ConditionSql::commonDimension(const Condition &condition)
{
    if (condition.kind == Condition::Kind::Test)
        return condition.field->dimension != nullptr ? condition.field : nullptr;
    const ViewField *common = nullptr;
    for (const Condition &child : condition.children) {
        const ViewField *field = commonDimension(child);
        if (field == nullptr || (common != nullptr && !isSameDimension(field, common)))
            return nullptr;
        common = field;
    }
    return common;
}

QString ConditionSql::write(const Condition &condition)
{
    ++m_height;
    if (condition.kind == Condition::Kind::Everything)
        return QStringLiteral("1 = 1");
    if (condition.kind == Condition::Kind::Nothing)
        return QStringLiteral("1 = 0");
    const ViewField *dimension = m_isInDimension ? nullptr : commonDimension(condition);
    if (dimension != nullptr) {
        m_tables |= dimension->keyTables;
        return QLatin1String(dimension->key) + QLatin1Char(' ') +
               writeDimension(dimension, condition);
    }
    if (condition.kind != Condition::Kind::Test)
        return writeGroup(condition);
    if (m_isInDimension)
        return writeTest(condition, QLatin1String(condition.field->dimensionColumn));
    m_tables |= condition.field->tables;
    return writeTest(condition, QLatin1String(condition.field->column));
}

QString ConditionSql::writeDimension(const ViewField *dimension, const Condition &condition)
{
    m_isInDimension = true;
    const QString inner = write(condition);
    m_isInDimension = false;
    return QStringLiteral("IN (SELECT id FROM %1 WHERE %2)")
        .arg(QLatin1String(dimension->dimension), inner);
}

/// Children that look at the same record of few become one, the cheap ones come first.
std::vector<Condition> ConditionSql::gathered(const Condition &group) const
{
    std::vector<Condition> children;
    std::vector<bool> taken(group.children.size(), false);
    for (std::size_t i = 0; i < group.children.size(); ++i) {
        if (taken[i])
            continue;
        const ViewField *field = commonDimension(group.children[i]);
        if (field == nullptr) {
            children.push_back(group.children[i]);
            continue;
        }
        std::vector<Condition> same{group.children[i]};
        for (std::size_t k = i + 1; k < group.children.size(); ++k) {
            const ViewField *other = taken[k] ? nullptr : commonDimension(group.children[k]);
            if (other != nullptr && isSameDimension(field, other)) {
                same.push_back(group.children[k]);
                taken[k] = true;
            }
        }
        children.push_back(group.kind == Condition::Kind::All ? Condition::all(std::move(same))
                                                              : Condition::any(std::move(same)));
    }
    std::stable_sort(children.begin(), children.end(),
                     [](const Condition &a, const Condition &b) { return costOf(a) < costOf(b); });
    return children;
}

QString ConditionSql::writeGroup(const Condition &group)
{
    const int above = m_height;
    int highest = above;
    QStringList parts;
    const std::vector<Condition> children = m_isInDimension ? group.children : gathered(group);
    for (const Condition &child : children) {
        m_height = above;
        const bool isGroup =
            child.kind == Condition::Kind::All || child.kind == Condition::Kind::Any;
        const QString part = write(child);
        parts << (isGroup ? QLatin1Char('(') + part + QLatin1Char(')') : part);
        highest = std::max(highest, m_height);
    }
    m_height = highest;
    const bool isAll = group.kind == Condition::Kind::All;
    return join(parts, isAll ? QStringLiteral(" AND ") : QStringLiteral(" OR "));
}

QString ConditionSql::join(const QStringList &parts, const QString &word)
{
    m_height += std::min(static_cast<int>(parts.size()), longestChain);
    if (parts.size() <= longestChain)
        return parts.join(word);
    QStringList chains;
    for (int i = 0; i < parts.size(); i += longestChain)
        chains << QLatin1Char('(') + parts.mid(i, longestChain).join(word) + QLatin1Char(')');
    return join(chains, word);
}

QString ConditionSql::writeTest(const Condition &test, const QString &column)
{
    const bool isNumberField = test.field->kind == ViewField::Kind::Number;
    switch (test.match) {
    case Condition::Match::EqualText:
        m_values << test.text;
        return column + QStringLiteral(" = ?");
    case Condition::Match::EqualNumber:
        m_values << test.number;
        return (isNumberField ? column : m_dialect.numberInText(column)) + QStringLiteral(" = ?");
    case Condition::Match::Contains:
        break;
    }
    const QString text = isNumberField ? QStringLiteral("CAST(%1 AS TEXT)").arg(column) : column;
    QString bound;
    const QString contains = m_dialect.containsText(text, test.text, &bound);
    m_values << bound;
    return contains;
}

} // namespace KODMS::Services
