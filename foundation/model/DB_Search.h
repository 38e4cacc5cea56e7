// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::DataLib::Model {

/// One search condition; an ordered list of them is a query.
///
/// A list reads from left to right: join to the one before, opening bracket,
/// field, match, value, closing bracket. AND binds tighter than OR. One record
/// of the list may carry the order, one (the last) the page window.
struct DB_Search {
    int openBracket = 0;    ///< 1 = "(" stands before this condition
    int closeBracket = 0;   ///< 2 = ")" stands after this condition
    int orWithPrevious = 0; ///< 0 = AND with the condition before, 1 = OR
    int fuzzy = 0;          ///< 1 = contains, 0 = equal
    std::string fieldName;  ///< a field of the searched view, for example "KoJobName"
    std::string value;      ///< UTF-8; numbers in decimal
    int relation = 0;       ///< always 0: plain comparison
    int pageEnabled = 0;    ///< 1 = this record carries the page window
    std::string pageStart;  ///< first row of the page, counted from 0, decimal
    std::string pageSize;   ///< rows a page, decimal
    int sortEnabled = 0;    ///< 1 = this record carries the order
    std::string sortField;  ///< field to sort by
    int sortDirection = 0;  ///< 1 = newest (largest) first, 0 = ascending
    int numericValue = 0;   ///< 1 = compare as a number
};

} // namespace KODMS::DataLib::Model
