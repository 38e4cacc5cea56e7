// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotAnswer.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace KODMS::Robot {

QByteArray RobotAnswer::toJson() const
{
    QJsonObject object{{QStringLiteral("accepted"), isAccepted}};
    if (isAccepted)
        object.insert(QStringLiteral("jobname"), jobName);
    else
        object.insert(QStringLiteral("reason"), reason);
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace KODMS::Robot
