// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace KODMS::Tests {

class SampleHouse;

/// A kodms-robot on an installation: a process of its own, which ends with the object.
class RobotAtWork {
public:
    /// Starts it with the sample's robot account and waits until it listens on a free
    /// port of this machine. A failure ends the test process.
    RobotAtWork(const SampleHouse &house, const QStringList &arguments);
    ~RobotAtWork();

    RobotAtWork(const RobotAtWork &) = delete;
    RobotAtWork &operator=(const RobotAtWork &) = delete;

    quint16 port() const { return m_port; }

    /// Asks it to end; its exit code, -1 for a crash.
    int stop();

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    quint16 m_port = 0;
};

} // namespace KODMS::Tests
