// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>
#include <QtGlobal>

namespace KODMS::Bench {

/// What a PostgreSQL server on this machine has used, all its processes together.
class ServerLoad {
public:
    explicit ServerLoad(int serverPid) : m_pid(serverPid) {}

    /// Milliseconds of processor time since it started, in steps of the kernel's clock.
    double processorMs() const;

    /// Bytes of memory that one connection has to itself; mean over those of the program.
    qint64 bytesOfAConnection() const;

    /// Connections of the program that are open now.
    int connections() const;

private:
    QVector<int> children() const;
    QVector<int> connectionPids() const;

    int m_pid;
};

/// Processor time of the calling thread, in milliseconds.
double threadProcessorMs();

/// Bytes of memory that this process has to itself.
qint64 ownBytes();

} // namespace KODMS::Bench
