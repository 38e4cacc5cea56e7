// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>

namespace KODMS::Tests {

class RobotHouse;

/// One kodms-robot. Ends with the object.
class RobotProcess {
public:
    /// Starts it on a free port; `arguments` go behind its own.
    RobotProcess(RobotHouse &house, const QStringList &arguments);
    ~RobotProcess();

    RobotProcess(const RobotProcess &) = delete;
    RobotProcess &operator=(const RobotProcess &) = delete;

    /// Waits for the first line of the output; 0 when there is none, and log() tells why.
    quint16 port();

    /// What stands on standard error so far.
    QByteArray log();
    bool waitForLog(const QByteArray &text);

    /// Asks for a job as a desk does, and returns the answer.
    QByteArray ask(const QString &jobName, bool fromWeb = false);

    enum class Signal { Interruption, Termination };

    /// Whether a program can be sent signals; where not, it is killed instead.
    static bool hasSignals();

    /// The signal, and the exit code; -1 for a crash.
    int stop(Signal signal);
    /// Ends it as a person does, or kills it where there are no signals; false when it crashed.
    bool end();
    int waitForEnd();
    void kill();

private:
    void send(Signal signal) const;

    QProcess m_process;
    QByteArray m_output;
    QByteArray m_log;
    quint16 m_port = 0;
};

} // namespace KODMS::Tests
