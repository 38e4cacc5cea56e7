// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"

#include <string>
#include <vector>

namespace KODMS::UI {

/// Writes a condition list: one working record, changed step by step, of which
/// each add appends a copy. What a step sets stays set for the following copies
/// until another step changes it; the lists of the desks depend on that.
class ConditionBuilder {
public:
    /// Appends to `list`, which must outlive the builder. The record starts
    /// empty: joined by AND, no brackets, exact match.
    explicit ConditionBuilder(std::vector<DataLib::Model::DB_Search> &list) : m_list(list) {}

    ConditionBuilder &joinByAnd();
    ConditionBuilder &joinByOr();

    /// "(" before the next copies; noOpenBracket() ends that.
    ConditionBuilder &openBracket();
    ConditionBuilder &noOpenBracket();

    /// ")" after the next copies; noCloseBracket() ends that.
    ConditionBuilder &closeBracket();
    ConditionBuilder &noCloseBracket();

    ConditionBuilder &contains(); ///< fuzzy match
    ConditionBuilder &equals();   ///< exact match
    ConditionBuilder &asNumber(); ///< compare as a number
    ConditionBuilder &plainRelation();
    ConditionBuilder &value(std::string text);

    /// From the next copy on the record carries the order: newest first by `field`.
    ConditionBuilder &newestFirst(const char *field);

    /// Appends the condition on `field` with `text` as its value.
    ConditionBuilder &add(const char *field, std::string text);

    /// Appends the condition on `field`; the value stays what it was.
    ConditionBuilder &add(const char *field);

    /// Appends the record once more as it stands.
    ConditionBuilder &addAgain();

private:
    std::vector<DataLib::Model::DB_Search> &m_list;
    DataLib::Model::DB_Search m_record;
};

/// The signed-in user's id in decimal, fetched afresh. GUI thread.
std::string currentUserIdText();

} // namespace KODMS::UI
