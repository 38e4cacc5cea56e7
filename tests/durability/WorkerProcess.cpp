// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/durability/WorkerProcess.h"

#include <QElapsedTimer>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 30000;

} // namespace

WorkerProcess::WorkerProcess(const QString &iniPath, const QString &mode, quint32 seed,
                             const QString &scratch, const QString &step)
    : m_arguments{iniPath, mode, QString::number(seed), scratch, step}
{
}

WorkerProcess::~WorkerProcess()
{
    if (m_process.state() != QProcess::NotRunning)
        kill();
}

void WorkerProcess::setFullDisk(const QString &root, qint64 budget, bool fromStart)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(KODMS_FULL_DISK));
    environment.insert(QStringLiteral("KODMS_DISK_ROOT"), root);
    environment.insert(QStringLiteral("KODMS_DISK_BUDGET"), QString::number(budget));
    if (fromStart)
        environment.insert(QStringLiteral("KODMS_DISK_FROM_START"), QStringLiteral("1"));
    m_process.setProcessEnvironment(environment);
}

bool WorkerProcess::start()
{
    m_process.start(QStringLiteral(KODMS_WORKER), m_arguments);
    return m_process.waitForStarted(PatienceMs);
}

bool WorkerProcess::waitForReady()
{
    while (!m_output.contains("ready\n")) {
        if (!m_process.waitForReadyRead(PatienceMs))
            return false;
        m_output += m_process.readAllStandardOutput();
    }
    return true;
}

void WorkerProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished(PatienceMs);
}

bool WorkerProcess::finish()
{
    m_process.closeWriteChannel();
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(PatienceMs);
}

QStringList WorkerProcess::lines()
{
    m_output += m_process.readAllStandardOutput();
    // A line without its end was not said.
    const int end = m_output.lastIndexOf('\n');
    return QString::fromUtf8(m_output.left(end + 1)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace KODMS::Tests
