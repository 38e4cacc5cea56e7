// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/OwnServer.h"

#include "tests/filestore/support/ServerSignals.h"

#include <QFile>
#include <QProcess>
#include <QThread>
#include <QUrl>

namespace KODMS::Tests {

namespace {

constexpr int Patience = 120000;

/// A killed process that nobody has asked about yet has a number and nothing else.
bool isRunning(qint64 process)
{
    QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(process));
    return commandLine.open(QIODevice::ReadOnly) && !commandLine.readAll().isEmpty();
}

} // namespace

OwnServer::~OwnServer()
{
    resume();
    run({QStringLiteral("stop"), m_dir.path()});
}

bool OwnServer::start()
{
    QStringList arguments{QStringLiteral("start"), m_dir.path()};
    if (!m_port.isEmpty())
        arguments << m_port;
    if (!run(arguments))
        return false;
    m_port = QString::number(QUrl(uri()).port());
    return true;
}

bool OwnServer::run(const QStringList &arguments)
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/mongo-test-server"), arguments);
    const bool ended = script.waitForFinished(Patience);
    m_error = QString::fromUtf8(script.readAll());
    return ended && script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0;
}

qint64 OwnServer::process() const
{
    QFile file(m_dir.filePath(QStringLiteral("pid")));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

void OwnServer::kill()
{
    const qint64 running = process();
    signalServer(running, ServerSignal::Kill);
    while (running > 0 && isRunning(running))
        QThread::msleep(10);
}

void OwnServer::pause()
{
    signalServer(process(), ServerSignal::Stop);
}

void OwnServer::resume()
{
    signalServer(process(), ServerSignal::Continue);
}

QString OwnServer::uri() const
{
    QFile file(m_dir.filePath(QStringLiteral("uri")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

QString OwnServer::address() const
{
    return QStringLiteral("127.0.0.1:") + m_port;
}

} // namespace KODMS::Tests
