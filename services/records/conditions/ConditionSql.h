// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"

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
    explicit ConditionSql(const Dialect &dialect) : m_dialect(dialect) {}

    QString write(const Condition &condition);

    const QVector<QVariant> &values() const { return m_values; }

    /// Joined tables that the expression needs.
    unsigned tables() const { return m_tables; }

    /// How deep the engine's expression tree becomes.
    int height() const { return m_height; }

    /// The field whose key the whole condition asks for, when all its tests look
    /// at one record of few (a person, a customer); else null.
    static const ViewField *commonDimension(const Condition &condition);

    /// "IN (SELECT id FROM ...)": the records that such a condition means.
    QString writeDimension(const ViewField *dimension, const Condition &condition);

private:
    QString writeGroup(const Condition &group);
    QString writeTest(const Condition &test, const QString &column);
    QString join(const QStringList &parts, const QString &word);
    std::vector<Condition> gathered(const Condition &group) const;

    const Dialect &m_dialect;
    QVector<QVariant> m_values;
    unsigned m_tables = 0;
    int m_height = 0;
    bool m_isInDimension = false;
};

} // namespace KODMS::Services
