// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/ConditionSql.h"

#include "services/records/Dialect.h"
#include "services/records/conditions/FlowStates.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

/// Links of one chain: a chain makes the expression tree as deep as it is long, so
/// long ones become chains of chains.
constexpr int longestChain = 50;

/// A longer list of alternatives does not get a set for each.
constexpr std::size_t mostSets = 16;

bool isSameDimension(const ViewField *a, const ViewField *b)
{
    return qstrcmp(a->key, b->key) == 0;
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
    if (FlowStates::isAbout(m_view, condition))
        return writeStateTest(condition);
    const ViewField *dimension = m_isInDimension ? nullptr : commonDimension(condition);
    if (dimension != nullptr) {
        m_tables |= dimension->keyTables;
        return QLatin1String(dimension->key) + QLatin1Char(' ') +
               writeDimension(dimension, condition);
    }
    return condition.kind == Condition::Kind::Test ? writeTest(condition) : writeGroup(condition);
}

QString ConditionSql::writeDimension(const ViewField *dimension, const Condition &condition)
{
    m_isInDimension = true;
    const QString inner = write(condition);
    m_isInDimension = false;
    return QStringLiteral("IN (SELECT id FROM %1 WHERE %2)")
        .arg(QLatin1String(dimension->dimension), inner);
}

QString ConditionSql::writeStates(const Condition &condition) const
{
    QStringList codes;
    for (const int code : FlowStates::codes(m_view, condition))
        codes << QString::number(code);
    if (codes.isEmpty())
        codes << QStringLiteral("-1");
    return QStringLiteral("IN (") + codes.join(QStringLiteral(", ")) + QLatin1Char(')');
}

/// Comparisons of neighbouring pairs, which cost a row less than a look into a list.
QString ConditionSql::writeStateTest(const Condition &condition) const
{
    const QVector<int> codes = FlowStates::codes(m_view, condition);
    QStringList tests;
    for (int first = 0; first < codes.size();) {
        int last = first;
        while (last + 1 < codes.size() && FlowStates::areNeighbours(codes[last], codes[last + 1]))
            ++last;
        tests << QStringLiteral("%1 BETWEEN %2 AND %3")
                     .arg(QLatin1String(m_view.state))
                     .arg(codes[first])
                     .arg(codes[last]);
        first = last + 1;
    }
    if (tests.isEmpty())
        return QStringLiteral("1 = 0");
    return QLatin1Char('(') + tests.join(QStringLiteral(" OR ")) + QLatin1Char(')');
}

/// Conditions of one family look at the same small thing and can be asked as one.
QString ConditionSql::familyOf(const Condition &condition) const
{
    if (FlowStates::isAbout(m_view, condition))
        return QLatin1String(m_view.state);
    const ViewField *dimension = commonDimension(condition);
    return dimension == nullptr ? QString() : QString::fromLatin1(dimension->key);
}

/// What asking one row costs, roughly: numbers first, then texts, then what nearly
/// every row meets, then what another table has to be read for.
int ConditionSql::costOf(const Condition &condition) const
{
    constexpr int joined = 5;
    if (FlowStates::isAbout(m_view, condition))
        return FlowStates::codes(m_view, condition).contains(FlowStates::finished) ? 3 : 1;
    const ViewField *dimension = commonDimension(condition);
    if (dimension != nullptr)
        return dimension->keyTables == 0 ? 1 : 1 + joined;
    if (condition.kind == Condition::Kind::Test) {
        const int compare = condition.match == Condition::Match::EqualNumber ? 1 : 2;
        return condition.field->tables == 0 ? compare : compare + joined;
    }
    int cost = 0;
    for (const Condition &child : condition.children)
        cost += costOf(child);
    return cost;
}

/// Children of one family become one, the cheap ones come first.
std::vector<Condition> ConditionSql::gathered(const Condition &group) const
{
    std::vector<std::pair<QString, std::vector<Condition>>> families;
    for (const Condition &child : group.children) {
        const QString family = familyOf(child);
        const auto known = std::find_if(families.begin(), families.end(), [&](const auto &other) {
            return !family.isEmpty() && other.first == family;
        });
        if (known != families.end())
            known->second.push_back(child);
        else
            families.push_back({family, {child}});
    }
    std::vector<std::pair<int, Condition>> children;
    for (auto &family : families) {
        Condition one = group.kind == Condition::Kind::All
                            ? Condition::all(std::move(family.second))
                            : Condition::any(std::move(family.second));
        const int cost = costOf(one);
        children.emplace_back(cost, std::move(one));
    }
    std::stable_sort(children.begin(), children.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<Condition> sorted;
    for (auto &child : children)
        sorted.push_back(std::move(child.second));
    return sorted;
}

QString ConditionSql::writeGroup(const Condition &group)
{
    const int above = m_height;
    int highest = above;
    QStringList parts;
    const std::vector<Condition> children = m_isInDimension ? group.children : gathered(group);
    const bool wasAlternative = m_isAlternative;
    m_isAlternative =
        m_way != Way::Walk && group.kind == Condition::Kind::Any && children.size() <= mostSets;
    for (const Condition &child : children) {
        m_height = above;
        const bool isGroup =
            child.kind == Condition::Kind::All || child.kind == Condition::Kind::Any;
        const QString part = write(child);
        parts << (isGroup ? QLatin1Char('(') + part + QLatin1Char(')') : part);
        highest = std::max(highest, m_height);
    }
    m_isAlternative = wasAlternative;
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

QString ConditionSql::writeTest(const Condition &test)
{
    const ViewField *field = test.field;
    const bool isNumberTest = test.match == Condition::Match::EqualNumber;
    if (isNumberTest && m_isAlternative && field->set != nullptr) {
        m_values << test.number;
        return QStringLiteral("%1 IN (%2 = %3)")
            .arg(QLatin1String(field->setColumn), QLatin1String(field->set),
                 m_dialect.boundNumber());
    }
    const QString column = QLatin1String(m_isInDimension ? field->dimensionColumn : field->column);
    if (!m_isInDimension)
        m_tables |= field->tables;
    if (test.match == Condition::Match::EqualText) {
        m_values << test.text;
        return column + QStringLiteral(" = ?");
    }
    if (isNumberTest)
        return writeNumberTest(test, column);
    const bool isNumber = field->kind == ViewField::Kind::Number;
    QString bound;
    const QString contains = m_dialect.containsText(
        isNumber ? QStringLiteral("CAST(%1 AS TEXT)").arg(column) : column, test.text, &bound);
    m_values << bound;
    return contains;
}

QString ConditionSql::writeNumberTest(const Condition &test, const QString &column)
{
    m_values << test.number;
    if (test.field->kind == ViewField::Kind::Text)
        return m_dialect.numberInText(column) + QStringLiteral(" = ?");
    const bool hidesIndex = test.field->walk != nullptr && m_way != Way::Free;
    return column + (hidesIndex ? QStringLiteral(" + 0 = ") : QStringLiteral(" = ")) +
           m_dialect.boundNumber();
}

} // namespace KODMS::Services
