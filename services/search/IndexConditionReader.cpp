// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexConditionReader.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

TextTest textTest(const Condition &condition)
{
    switch (condition.match) {
    case Condition::Match::Contains:
        return TextTest::contains(condition.text.toStdString());
    case Condition::Match::EqualNumber:
        return TextTest::number(condition.number);
    case Condition::Match::EqualText:
        break;
    }
    return TextTest::equal(condition.text.toStdString());
}

/// Sets of places of one column become one set. A row without a place is in none of
/// them, whichever way they are joined.
bool joinMembers(IndexCondition &first, const IndexCondition &second, bool isAll)
{
    const bool isSameColumn = first.kind == IndexCondition::Kind::Members &&
                              second.kind == IndexCondition::Kind::Members &&
                              first.column == second.column;
    if (!isSameColumn)
        return false;
    for (std::size_t place = 0; place < first.members.size(); ++place) {
        const bool both = first.members[place] != 0 && second.members[place] != 0;
        const bool either = first.members[place] != 0 || second.members[place] != 0;
        first.members[place] = (isAll ? both : either) ? 1 : 0;
    }
    return true;
}

/// Of conditions that all have to be met, those that another one implies say nothing: as the
/// scope of a user beside a bracket that asks for his own rows.
void dropImplied(std::vector<IndexCondition> &all)
{
    constexpr std::size_t most = 32; // longer lists are looked through as they stand
    for (std::size_t i = all.size() <= most ? 0 : all.size(); i < all.size();) {
        const auto isImplied = [&](const IndexCondition &other) {
            return &other != &all[i] && other.implies(all[i]);
        };
        if (std::any_of(all.begin(), all.end(), isImplied))
            all.erase(all.begin() + static_cast<std::ptrdiff_t>(i));
        else
            ++i;
    }
}

/// A set of one is a number, an empty one is nothing.
void simplify(IndexCondition &condition)
{
    if (condition.kind != IndexCondition::Kind::Members)
        return;
    const auto isMeant = [](std::uint8_t member) { return member != 0; };
    const auto count = std::count_if(condition.members.begin(), condition.members.end(), isMeant);
    if (count > 1)
        return;
    const auto first = std::find_if(condition.members.begin(), condition.members.end(), isMeant);
    condition.kind = count == 0 ? IndexCondition::Kind::Nothing : IndexCondition::Kind::Number;
    condition.number = first - condition.members.begin();
    condition.members.clear();
}

} // namespace

std::optional<IndexCondition> IndexConditionReader::read(const Condition &condition) const
{
    auto made = condition.kind == Condition::Kind::Test ? test(condition) : group(condition);
    if (made)
        simplify(*made);
    return made;
}

std::optional<IndexCondition> IndexConditionReader::group(const Condition &condition) const
{
    IndexCondition made;
    switch (condition.kind) {
    case Condition::Kind::Everything:
        return made;
    case Condition::Kind::Nothing:
        made.kind = IndexCondition::Kind::Nothing;
        return made;
    default:
        break;
    }
    const bool isAll = condition.kind == Condition::Kind::All;
    made.kind = isAll ? IndexCondition::Kind::All : IndexCondition::Kind::Any;
    for (const Condition &child : condition.children) {
        auto part = child.kind == Condition::Kind::Test ? test(child) : group(child);
        if (!part)
            return std::nullopt;
        const bool isJoined =
            std::any_of(made.children.begin(), made.children.end(),
                        [&](IndexCondition &known) { return joinMembers(known, *part, isAll); });
        if (!isJoined)
            made.children.push_back(std::move(*part));
    }
    for (IndexCondition &child : made.children)
        simplify(child);
    if (isAll)
        dropImplied(made.children);
    return made;
}

std::optional<IndexCondition> IndexConditionReader::test(const Condition &condition) const
{
    const IndexLayout::Field *field = m_layout.field(condition.field->name);
    if (field == nullptr)
        return std::nullopt;
    using Kind = IndexLayout::Field::Kind;
    if (field->kind == Kind::Key || field->kind == Kind::RecordText)
        return recordTest(condition, *field);
    if (field->kind != Kind::Text)
        return numberTest(condition, *field);
    IndexCondition made;
    made.kind = IndexCondition::Kind::Text;
    made.column = field->column;
    made.test = textTest(condition);
    return made;
}

IndexCondition IndexConditionReader::numberTest(const Condition &condition,
                                                const IndexLayout::Field &field) const
{
    const bool isId = field.kind == IndexLayout::Field::Kind::Id;
    IndexCondition made;
    made.column = field.column;
    if (condition.match == Condition::Match::EqualNumber) {
        made.kind = isId ? IndexCondition::Kind::Id : IndexCondition::Kind::Number;
        made.number = condition.number;
        return made;
    }
    made.kind = isId ? IndexCondition::Kind::IdText : IndexCondition::Kind::NumberText;
    made.test = textTest(condition);
    return made;
}

IndexCondition IndexConditionReader::recordTest(const Condition &condition,
                                                const IndexLayout::Field &field) const
{
    const RecordDictionary &records = m_dictionaries.of(m_layout.numbers[field.column].records);
    IndexCondition made;
    made.kind = IndexCondition::Kind::Members;
    made.column = field.column;
    if (field.kind == IndexLayout::Field::Kind::RecordText)
        made.members = records.withText(field.text, textTest(condition));
    else if (condition.match == Condition::Match::EqualNumber)
        made.members = records.withKey(condition.number);
    else
        made.members = records.withKeyText(textTest(condition));
    return made;
}

} // namespace KODMS::Services
