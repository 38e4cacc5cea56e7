// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ChangesField.h"

#include "services/api/LiveChanges.h"

namespace KODMS::Host {

ChangesField::ChangesField(QWidget *parent) : QToolButton(parent)
{
    setObjectName(QStringLiteral("foreignChanges"));
    setAutoRaise(true);
    setToolTip(tr("其他人或另一台工作台更改了记录，刷新后可见 (F5)"));
    const auto &changes = Services::LiveChanges::instance();
    connect(&changes, &Services::LiveChanges::countChanged, this, &ChangesField::showCount);
    showCount(changes.count());
}

void ChangesField::showCount(int records)
{
    setText(tr("%n 项他人更改 - 刷新 (F5)", nullptr, records));
    setVisible(records > 0);
}

} // namespace KODMS::Host
