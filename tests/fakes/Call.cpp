// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/fakes/Call.h"

#include <QObject>
#include <QStringList>

namespace KODMS::Fakes {

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('"') % text % QLatin1Char('"');
}

QString printableMap(const QVariantMap &map)
{
    QStringList parts;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        parts << entry.key() % QStringLiteral(": ") % entry.value().toString();
    return QLatin1Char('{') % parts.join(QStringLiteral(", ")) % QLatin1Char('}');
}

QString printableList(const ConditionList &list)
{
    QStringList parts;
    for (const auto &condition : list)
        parts << printable(condition);
    return QLatin1Char('[') % parts.join(QStringLiteral("; ")) % QLatin1Char(']');
}

QString printableArgument(const QVariant &value)
{
    if (value.userType() == QMetaType::QString)
        return quoted(value.toString());
    if (value.userType() == QMetaType::QVariantMap)
        return printableMap(value.toMap());
    if (value.userType() == qMetaTypeId<ConditionList>())
        return printableList(value.value<ConditionList>());
    if (value.userType() == qMetaTypeId<UI::Import_Info>())
        return quoted(value.value<UI::Import_Info>().jobName);
    if (value.canConvert<QObject *>()) {
        const auto *object = value.value<QObject *>();
        return object ? QString::fromLatin1(object->metaObject()->className())
                      : QStringLiteral("null");
    }
    return value.toString();
}

} // namespace

QString printable(const DataLib::Model::DB_Search &condition)
{
    QString text = condition.orWithPrevious ? QStringLiteral("OR ") : QStringLiteral("AND ");
    if (condition.openBracket)
        text += QLatin1Char('(');
    text += QString::fromStdString(condition.fieldName);
    text += condition.fuzzy ? QStringLiteral(" ~ ") : QStringLiteral(" = ");
    text += quoted(QString::fromStdString(condition.value));
    if (condition.numericValue)
        text += QStringLiteral(" as number");
    if (condition.closeBracket)
        text += QLatin1Char(')');
    if (condition.sortEnabled)
        text += QStringLiteral(" order by %1 %2")
                    .arg(QString::fromStdString(condition.sortField))
                    .arg(condition.sortDirection);
    if (condition.pageEnabled)
        text += QStringLiteral(" page %1+%2")
                    .arg(QString::fromStdString(condition.pageStart),
                         QString::fromStdString(condition.pageSize));
    return text;
}

QString printable(const Call &call)
{
    QStringList parts;
    for (const QVariant &value : call.arguments)
        parts << printableArgument(value);
    return call.name % QLatin1Char('(') % parts.join(QStringLiteral(", ")) % QLatin1Char(')');
}

} // namespace KODMS::Fakes
