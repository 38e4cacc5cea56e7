// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/search/ConditionBuilder.h"

#include "foundation/ui/DMS_StdCommon.h"

#include <utility>

namespace KODMS::UI {

namespace {

constexpr int Opening = 1;
constexpr int Closing = 2;
constexpr int PlainComparison = 0;
constexpr int NewestFirst = 1;

} // namespace

ConditionBuilder &ConditionBuilder::joinByAnd()
{
    m_record.orWithPrevious = 0;
    return *this;
}

ConditionBuilder &ConditionBuilder::joinByOr()
{
    m_record.orWithPrevious = 1;
    return *this;
}

ConditionBuilder &ConditionBuilder::openBracket()
{
    m_record.openBracket = Opening;
    return *this;
}

ConditionBuilder &ConditionBuilder::noOpenBracket()
{
    m_record.openBracket = 0;
    return *this;
}

ConditionBuilder &ConditionBuilder::closeBracket()
{
    m_record.closeBracket = Closing;
    return *this;
}

ConditionBuilder &ConditionBuilder::noCloseBracket()
{
    m_record.closeBracket = 0;
    return *this;
}

ConditionBuilder &ConditionBuilder::contains()
{
    m_record.fuzzy = 1;
    return *this;
}

ConditionBuilder &ConditionBuilder::equals()
{
    m_record.fuzzy = 0;
    return *this;
}

ConditionBuilder &ConditionBuilder::asNumber()
{
    m_record.numericValue = 1;
    return *this;
}

ConditionBuilder &ConditionBuilder::plainRelation()
{
    m_record.relation = PlainComparison;
    return *this;
}

ConditionBuilder &ConditionBuilder::value(std::string text)
{
    m_record.value = std::move(text);
    return *this;
}

ConditionBuilder &ConditionBuilder::newestFirst(const char *field)
{
    m_record.sortEnabled = 1;
    m_record.sortField = field;
    m_record.sortDirection = NewestFirst;
    return *this;
}

ConditionBuilder &ConditionBuilder::add(const char *field, std::string text)
{
    value(std::move(text));
    return add(field);
}

ConditionBuilder &ConditionBuilder::add(const char *field)
{
    m_record.fieldName = field;
    return addAgain();
}

ConditionBuilder &ConditionBuilder::addAgain()
{
    m_list.push_back(m_record);
    return *this;
}

std::string currentUserIdText()
{
    return std::to_string(DMS_StdCommon::interface()->getCurrentUser().id);
}

} // namespace KODMS::UI
