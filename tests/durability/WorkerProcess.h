// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>

namespace KODMS::Tests {

/// The worker program as a process of its own, with what it said.
class WorkerProcess {
public:
    WorkerProcess(const QString &iniPath, const QString &mode, quint32 seed, const QString &scratch,
                  const QString &step = QString());
    ~WorkerProcess();

    /// A disk with so many bytes left below `root`; from the program's start, or
    /// from when its own start is over.
    void setFullDisk(const QString &root, qint64 budget, bool fromStart);

    bool start();
    bool waitForReady();
    /// SIGKILL: no last words.
    void kill();
    /// Closes its input and waits.
    bool finish();

    int exitCode() const { return m_process.exitCode(); }

    bool endedByItself() const { return m_process.exitStatus() == QProcess::NormalExit; }

    QStringList lines();

    QString errors() { return QString::fromUtf8(m_process.readAllStandardError()); }

private:
    QStringList m_arguments;
    QProcess m_process;
    QByteArray m_output;
};

} // namespace KODMS::Tests
