// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/AssigneeCombo.h"

#include "foundation/bll/User_ViewBll.h"

#include <QComboBox>
#include <QIcon>
#include <QVariant>

namespace KODMS::UI {

void fillAssignees(QComboBox *combo, QVector<int> &ids, const AssigneeGroup &group)
{
    std::vector<DataLib::Model::User_View> users;
    DataLib::BLL::User_ViewBll().select({}, {}, users);
    for (const auto &user : users) {
        if (user.department != group.department || user.post != group.post)
            continue;
        combo->insertItem(combo->count(), QIcon(), QString::fromStdString(user.realName),
                          QVariant());
        ids.append(user.id);
    }
}

} // namespace KODMS::UI
