// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/CandidateSql.h"

#include "services/records/Dialect.h"
#include "services/records/conditions/ConditionSql.h"
#include "services/records/conditions/FlowStates.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

/// Longer unions cost more than they save.
constexpr std::size_t mostAlternatives = 8;

} // namespace

QVector<CandidateSql::Walk> CandidateSql::walks(const Condition &where) const
{
    QVector<Walk> all;
    const auto add = [&](const Condition &condition) {
        const Walk walk = walkOf(condition);
        if (!walk.sql.isEmpty())
            all << walk;
    };
    if (where.kind != Condition::Kind::All) {
        add(where);
        return all;
    }
    std::vector<Condition> states;
    for (const Condition &child : where.children) {
        if (FlowStates::isAbout(m_view, child))
            states.push_back(child);
        else
            add(child);
    }
    if (!states.empty())
        add(Condition::all(std::move(states)));
    return all;
}

CandidateSql::Walk CandidateSql::walkOf(const Condition &condition) const
{
    ConditionSql sql(m_view, m_dialect);
    if (FlowStates::isAbout(m_view, condition))
        return {QLatin1String(m_view.stateWalk) + QLatin1Char(' ') + sql.writeStates(condition),
                {}};
    const ViewField *dimension = ConditionSql::commonDimension(condition);
    if (dimension != nullptr) {
        const QString in = sql.writeDimension(dimension, condition);
        return {QLatin1String(dimension->walk) + QLatin1Char(' ') + in, sql.values(), false};
    }
    if (condition.kind == Condition::Kind::Any)
        return unionOf(condition);
    return condition.kind == Condition::Kind::Test ? testWalk(condition) : Walk();
}

CandidateSql::Walk CandidateSql::testWalk(const Condition &test) const
{
    const bool isNumber = test.field->kind == ViewField::Kind::Number;
    const bool hasWalk =
        test.field->walk != nullptr &&
        test.match == (isNumber ? Condition::Match::EqualNumber : Condition::Match::EqualText);
    if (!hasWalk)
        return {};
    const QVariant value = isNumber ? QVariant(test.number) : QVariant(test.text);
    const QString bound = isNumber ? m_dialect.boundNumber() : QStringLiteral("?");
    return {QLatin1String(test.field->walk) + QStringLiteral(" = ") + bound, {value}, false};
}

CandidateSql::Walk CandidateSql::unionOf(const Condition &any) const
{
    if (any.children.size() > mostAlternatives)
        return {};
    QVector<Walk> walks;
    for (const Condition &child : any.children) {
        const Walk walk = walkOf(child);
        if (walk.sql.isEmpty())
            return {};
        walks << walk;
    }
    // Whoever counts the walk up to a limit should reach it in the cheap ones.
    std::stable_partition(walks.begin(), walks.end(), [](const Walk &walk) {
        return !walk.sql.contains(QLatin1String(" JOIN "));
    });
    Walk all;
    for (const Walk &walk : qAsConst(walks)) {
        all.sql += (all.sql.isEmpty() ? QString() : QStringLiteral(" UNION ALL ")) + walk.sql;
        all.values += walk.values;
    }
    return all;
}

} // namespace KODMS::Services
