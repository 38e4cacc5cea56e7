// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

class QComboBox;

namespace KODMS::UI {

/// The people whom a desk may pick: both grouping numbers of the user must match.
struct AssigneeGroup {
    int department;
    int post;
};

constexpr AssigneeGroup PreCheckers{3, 10};
constexpr AssigneeGroup Executors{2, 6};

/// Appends the users of `group` to the combo box, in the order in which the user
/// service lists them, and their ids to `ids`. Meant to run once a desk.
void fillAssignees(QComboBox *combo, QVector<int> &ids, const AssigneeGroup &group);

} // namespace KODMS::UI
