// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"
#include "services/records/conditions/SearchView.h"

#include <QString>
#include <QVariant>
#include <QVector>

#include <vector>

namespace KODMS::Services {

class Dialect;

/// Writes a condition tree as one SQL expression. Values are bound, never
/// written: values() are for the "?" of the expression, in order.
class ConditionSql {
public:
    /// How the search comes to the rows that the expression is asked for.
    enum class Way {
        Walk,  ///< by an index walk: few rows
        Order, ///< all rows in the desk's order: the engine is to look for no other way
        Free   ///< all rows, in any order: the engine may look for a way
    };

    ConditionSql(const SearchView &view, const Dialect &dialect, Way way = Way::Walk)
        : m_view(view), m_dialect(dialect), m_way(way)
    {
    }

    QString write(const Condition &condition);

    /// "IN (SELECT id FROM ...)": the records of few that such a condition means.
    QString writeDimension(const ViewField *dimension, const Condition &condition);

    /// "IN (1, 2)": the pairs of status and flag that such a condition means.
    QString writeStates(const Condition &condition) const;

    const QVector<QVariant> &values() const { return m_values; }

    /// Joined tables that the expression needs.
    unsigned tables() const { return m_tables; }

    /// How deep the engine's expression tree becomes.
    int height() const { return m_height; }

    /// The field whose key the whole condition asks for, when all its tests look
    /// at one record of few (a person, a customer); else null.
    static const ViewField *commonDimension(const Condition &condition);

private:
    QString writeGroup(const Condition &group);
    QString writeTest(const Condition &test);
    QString writeNumberTest(const Condition &test, const QString &column);
    QString join(const QStringList &parts, const QString &word);
    QString writeStateTest(const Condition &condition) const;
    QString familyOf(const Condition &condition) const;
    int costOf(const Condition &condition) const;
    std::vector<Condition> gathered(const Condition &group) const;

    const SearchView &m_view;
    const Dialect &m_dialect;
    Way m_way;
    QVector<QVariant> m_values;
    unsigned m_tables = 0;
    int m_height = 0;
    bool m_isInDimension = false;
    bool m_isAlternative = false; ///< one of a few tests of which one is enough
};

} // namespace KODMS::Services
