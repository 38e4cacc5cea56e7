// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/OutageField.h"

#include "services/api/LiveChanges.h"

namespace KODMS::Host {

OutageField::OutageField(QWidget *parent) : QLabel(tr("数据库暂时无法读取"), parent)
{
    setObjectName(QStringLiteral("outageField"));
    setToolTip(tr("会自动重试；刷新 (F5) 会立即重试"));
    const auto &changes = Services::LiveChanges::instance();
    connect(&changes, &Services::LiveChanges::failedChanged, this, &OutageField::setVisible);
    setVisible(changes.hasFailed());
}

} // namespace KODMS::Host
