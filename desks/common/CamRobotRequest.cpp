// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/CamRobotRequest.h"

#include "foundation/common/Common.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

namespace KODMS::UI {

namespace {

constexpr int TakeJob = 1;
constexpr int AnswerTimeMs = 1000;

} // namespace

CamRobotRequest::CamRobotRequest(const QString &jobName, bool fromWeb)
    : m_jobName(jobName), m_fromWeb(fromWeb)
{
}

QByteArray CamRobotRequest::bytes() const
{
    const QJsonObject parameters{{QStringLiteral("fromWeb"), m_fromWeb},
                                 {QStringLiteral("jobname"), m_jobName.toLower()}};
    const QJsonObject request{{QStringLiteral("module"), QStringLiteral("robot")},
                              {QStringLiteral("msgType"), TakeJob},
                              {QStringLiteral("msgParams"), parameters}};
    return QJsonDocument(request).toJson();
}

void CamRobotRequest::send() const
{
    const KODMS_Config config = Common::commonInterface()->getConfig();
    const QHostAddress robot(QString::fromStdString(config.robotHost));
    if (robot.isNull())
        return; // no numeric address: there is nobody to connect to
    QTcpSocket socket;
    socket.connectToHost(robot, static_cast<quint16>(config.robotPort), QIODevice::ReadWrite);
    socket.write(bytes());
    // The second includes the connection attempt: Qt subtracts what that took, so
    // that an address which swallows packets costs no more than a silent robot.
    socket.waitForReadyRead(AnswerTimeMs);
    // A robot that speaks first ends the wait before the request has left.
    if (socket.state() == QAbstractSocket::ConnectedState)
        socket.flush();
    socket.close();
}

} // namespace KODMS::UI
