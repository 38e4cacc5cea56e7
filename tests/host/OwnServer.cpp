// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/host/OwnServer.h"

#include "tests/support/ServerFile.h"

#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>

namespace KODMS::Tests {

OwnServer::OwnServer()
{
    qputenv("KODMS_TEST_COMMIT", "on");
    run("start");
    qputenv("KODMS_TEST_ENGINE", "postgres");
    qputenv("KODMS_TEST_SERVER", m_folder.filePath(QStringLiteral("server")).toUtf8());
}

OwnServer::~OwnServer()
{
    run("stop");
}

void OwnServer::run(const char *command) const
{
    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    script.setStandardOutputFile(QProcess::nullDevice());
    script.start(QStringLiteral(KODMS_TEST_SERVER_SCRIPT),
                 {QString::fromLatin1(command), m_folder.path(), QStringLiteral("child")});
    if (!script.waitForFinished(300'000) || script.exitCode() != 0)
        qFatal("the server did not %s", command);
}

qint64 OwnServer::pid() const
{
    return ServerFile(m_folder.filePath(QStringLiteral("server"))).pid();
}

void OwnServer::kill(int signal) const
{
    const auto process = static_cast<pid_t>(pid());
    if (process <= 1 || ::kill(process, signal) != 0)
        qFatal("there is no server to kill");
    while (QFile::exists(QStringLiteral("/proc/%1/exe").arg(process)) &&
           !QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process)).isEmpty())
        QThread::msleep(20);
}

void OwnServer::resume() const
{
    run("resume");
}

} // namespace KODMS::Tests
