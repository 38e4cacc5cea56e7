// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/DB_Search.h"
#include "foundation/ui/Import_Info.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <map>
#include <string>
#include <vector>

Q_DECLARE_METATYPE(std::vector<KODMS::DataLib::Model::DB_Search>)
Q_DECLARE_METATYPE(KODMS::UI::Import_Info)

namespace KODMS::Fakes {

using ConditionList = std::vector<DataLib::Model::DB_Search>;

/// One call of a contract operation: "Class::operation" and its arguments in
/// order. Texts are QString, numbers int, condition maps QVariantMap, condition
/// lists ConditionList, widgets QWidget pointers, the import record Import_Info.
struct Call {
    QString name;
    QVariantList arguments;
};

/// One line for people: Class::operation(argument, "text", {key: value}).
/// A condition list is printed record by record.
KODMS_SERVICES_API QString printable(const Call &call);
KODMS_SERVICES_API QString printable(const DataLib::Model::DB_Search &condition);

inline QVariant argument(const std::string &text)
{
    return QString::fromStdString(text);
}

inline QVariant argument(const std::wstring &text)
{
    return QString::fromStdWString(text);
}

inline QVariant argument(const QString &text)
{
    return text;
}

inline QVariant argument(int number)
{
    return number;
}

inline QVariant argument(bool flag)
{
    return flag;
}

template <typename Value> QVariant argument(const std::map<std::string, Value> &conditions)
{
    QVariantMap map;
    for (const auto &condition : conditions)
        map.insert(QString::fromStdString(condition.first), argument(condition.second));
    return map;
}

template <typename Value> QVariant argument(const Value &value)
{
    return QVariant::fromValue(value);
}

} // namespace KODMS::Fakes
