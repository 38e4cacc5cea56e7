// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/ViewField.h"

#include <QString>

#include <vector>

namespace KODMS::Services {

/// A condition list as a tree: what a row has to be. Built by the functions
/// below, which keep it small: no group in a group of its kind, no group of one,
/// nothing that every row or no row meets next to something else.
struct Condition {
    enum class Kind {
        Everything, ///< every row
        Nothing,    ///< no row
        All,        ///< every child
        Any,        ///< at least one child
        Test        ///< one field
    };
    enum class Match { Contains, EqualText, EqualNumber };

    Kind kind = Kind::Everything;
    std::vector<Condition> children;
    const ViewField *field = nullptr;
    Match match = Match::EqualText;
    QString text;      ///< for Contains and EqualText
    qint64 number = 0; ///< for EqualNumber
    int depth = 0;     ///< groups in groups below this one

    static Condition everything() { return {}; }

    static Condition nothing();
    static Condition equalNumber(const ViewField *field, qint64 number);
    static Condition test(const ViewField *field, Match match, const QString &text);
    static Condition all(std::vector<Condition> children);
    static Condition any(std::vector<Condition> children);

    bool operator==(const Condition &other) const;
};

} // namespace KODMS::Services
