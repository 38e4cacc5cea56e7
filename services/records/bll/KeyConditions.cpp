// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/KeyConditions.h"

#include "services/records/bll/Change.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

KeyConditions::KeyConditions(const std::vector<Key> &keys,
                             const std::map<std::string, std::string> &texts,
                             const std::map<std::string, int> &numbers)
{
    for (const auto &[name, value] : texts)
        add(keys, name, false, Change::text(value, LongestRemark));
    for (const auto &[name, value] : numbers)
        add(keys, name, true, value);
}

void KeyConditions::add(const std::vector<Key> &keys, const std::string &name, bool isNumber,
                        const QVariant &value)
{
    const auto key = std::find_if(keys.begin(), keys.end(), [&](const Key &one) {
        return name == one.name && one.isNumber == isNumber;
    });
    if (key == keys.end())
        Change::fail(QStringLiteral("unknown search key \"%1\"").arg(shortText(name)),
                     QCoreApplication::translate("Change", "未知的查询条件"));
    m_columns << QString::fromLatin1(key->column);
    m_values << value;
}

QString KeyConditions::andSql() const
{
    QString sql;
    for (const QString &column : m_columns)
        sql += QStringLiteral(" AND ") + column + QStringLiteral(" = ?");
    return sql;
}

void KeyConditions::bindTo(SqlQuery &query) const
{
    for (int i = 0; i < m_values.size(); ++i)
        query.bind(i, m_values[i]);
}

} // namespace KODMS::Services
