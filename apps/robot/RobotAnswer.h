// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::Robot {

/// What the robot says to a request.
struct RobotAnswer {
    bool isAccepted = false;
    QString jobName; ///< as the records write it; empty when refused
    QString reason;  ///< empty when accepted

    static RobotAnswer accepted(const QString &jobName) { return {true, jobName, QString()}; }

    static RobotAnswer refused(const QString &reason) { return {false, QString(), reason}; }

    /// One JSON object on one line: {"accepted":true,"jobname":...} or
    /// {"accepted":false,"reason":...}.
    QByteArray toJson() const;
};

} // namespace KODMS::Robot
