// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlQuery.h"

#include <QStringList>
#include <QVariantList>

#include <map>
#include <string>
#include <vector>

namespace KODMS::Services {

/// The two maps of a select() as SQL: each key is looked up in a white list, each
/// value is bound.
class KeyConditions {
public:
    struct Key {
        const char *name;
        const char *column;
        bool isNumber;
    };

    /// Throws ChangeStopped for a key that is not listed, or stands in the wrong map.
    KeyConditions(const std::vector<Key> &keys, const std::map<std::string, std::string> &texts,
                  const std::map<std::string, int> &numbers);

    /// " AND a = ? AND b = ?", or nothing.
    QString andSql() const;

    void bindTo(SqlQuery &query) const;

private:
    void add(const std::vector<Key> &keys, const std::string &name, bool isNumber,
             const QVariant &value);

    QStringList m_columns;
    QVariantList m_values;
};

} // namespace KODMS::Services
