// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace KODMS::Tests {

/// An expected condition, written as it reads: exact, joined by AND, without
/// brackets unless said otherwise.
class Expected : public DataLib::Model::DB_Search {
public:
    Expected(const char *field, const char *text)
    {
        fieldName = field;
        value = text;
    }

    Expected &fuzzy(int on = 1)
    {
        DB_Search::fuzzy = on;
        return *this;
    }

    Expected &orJoin()
    {
        orWithPrevious = 1;
        return *this;
    }

    Expected &open()
    {
        openBracket = 1;
        return *this;
    }

    Expected &close()
    {
        closeBracket = 2;
        return *this;
    }

    Expected &number()
    {
        numericValue = 1;
        return *this;
    }

    Expected &sorted(const char *field)
    {
        sortEnabled = 1;
        sortField = field;
        sortDirection = 1;
        return *this;
    }

    Expected &page(const char *start)
    {
        pageEnabled = 1;
        pageStart = start;
        pageSize = "30";
        return *this;
    }
};

/// Every field of every record, one line a record, so that a comparison fails on
/// any difference and shows it.
inline QStringList allFields(const std::vector<DataLib::Model::DB_Search> &list)
{
    QStringList lines;
    for (const auto &c : list)
        lines << QStringLiteral("open %1 close %2 or %3 fuzzy %4 %5 '%6' relation %7 page %8 '%9'")
                         .arg(c.openBracket)
                         .arg(c.closeBracket)
                         .arg(c.orWithPrevious)
                         .arg(c.fuzzy)
                         .arg(QString::fromStdString(c.fieldName), QString::fromStdString(c.value))
                         .arg(c.relation)
                         .arg(c.pageEnabled)
                         .arg(QString::fromStdString(c.pageStart)) +
                     QStringLiteral(" '%1' sort %2 '%3' %4 numeric %5")
                         .arg(QString::fromStdString(c.pageSize))
                         .arg(c.sortEnabled)
                         .arg(QString::fromStdString(c.sortField))
                         .arg(c.sortDirection)
                         .arg(c.numericValue);
    return lines;
}

} // namespace KODMS::Tests
