// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace KODMS::Tests {

/// A test server of the test's own, to be killed, stopped and started again on the same
/// port. Gone with this object.
class OwnServer {
public:
    OwnServer() = default;
    ~OwnServer();
    OwnServer(const OwnServer &) = delete;
    OwnServer &operator=(const OwnServer &) = delete;

    /// False, with the reason in errorText(), when it does not come up.
    bool start();
    /// As a power cut would, and waits until it is gone.
    void kill();
    /// Keeps its connections and answers nobody, until resume().
    void pause();
    void resume();

    QString uri() const;
    /// HOST:PORT
    QString address() const;

    const QString &errorText() const { return m_error; }

private:
    bool run(const QStringList &arguments);
    qint64 process() const;

    QTemporaryDir m_dir;
    QString m_port;
    QString m_error;
};

} // namespace KODMS::Tests
