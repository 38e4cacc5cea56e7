// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/RobotAtWork.h"

#include "tests/e2e/SampleHouse.h"

#include <QFile>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 60000;

} // namespace

RobotAtWork::RobotAtWork(const SampleHouse &house, const QStringList &arguments)
{
    const QString login = QStringLiteral("robot");
    const QString passwordFile = m_dir.filePath(QStringLiteral("password"));
    QFile file(passwordFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(house.password(login).toUtf8() + '\n') < 0)
        qFatal("the robot's password cannot be written");
    file.close();
    m_process.start(QStringLiteral(KODMS_ROBOT_PROGRAM),
                    QStringList{QStringLiteral("--config"), house.configPath(),
                                QStringLiteral("--login"), login, QStringLiteral("--password-file"),
                                passwordFile, QStringLiteral("--port"), QStringLiteral("0")} +
                        arguments);
    m_process.closeWriteChannel();
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(PatienceMs))
            qFatal("kodms-robot does not listen: %s", m_process.readAllStandardError().constData());
    const QByteArray line = m_process.readLine().trimmed();
    m_port = line.mid(line.lastIndexOf(':') + 1).toUShort();
}

RobotAtWork::~RobotAtWork()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(PatienceMs);
    }
}

int RobotAtWork::stop()
{
#if defined(Q_OS_WIN) // where a program without windows cannot be asked to end
    m_process.kill();
    return m_process.waitForFinished(PatienceMs) ? 0 : -1;
#else
    m_process.terminate();
    const bool ended = m_process.waitForFinished(PatienceMs);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
#endif
}

} // namespace KODMS::Tests
