// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::UI {

/// Asks the CAM robot to take a job. GUI thread.
class CamRobotRequest {
public:
    /// `jobName` in whatever case it is shown; `fromWeb`: the job came by the web.
    CamRobotRequest(const QString &jobName, bool fromWeb);

    /// What goes over the line: one indented JSON object in UTF-8, ending in a
    /// line feed, with nothing before or after it.
    QByteArray bytes() const;

    /// Sends the request to the endpoint that the configuration names now, over a
    /// connection of its own, and gives the robot until one second after the start
    /// to take the connection and begin to answer. The answer is not read, and no
    /// failure is told: what the robot did shows in the flow's status.
    void send() const;

private:
    QString m_jobName;
    bool m_fromWeb;
};

} // namespace KODMS::UI
