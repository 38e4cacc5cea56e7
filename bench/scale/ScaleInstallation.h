// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>
#include <QTemporaryDir>

namespace KODMS::Bench {

/// An installation whose records stand on a server that was started for tests, with a
/// database of its own and generated records.
class ScaleInstallation {
public:
    /// `serverFile`: lines KEY=VALUE with host, port, user, passwordFile and pid.
    /// Throws std::runtime_error.
    ScaleInstallation(const QString &serverFile, int flows);

    QString host() const { return m_server[QStringLiteral("host")]; }

    quint16 port() const { return m_server[QStringLiteral("port")].toUShort(); }

    int serverPid() const { return m_server[QStringLiteral("pid")].toInt(); }

    /// Starts the services over `port` and signs in.
    void start(quint16 port);

    /// What somebody else writes: another job's remark, over a connection of their own.
    void changeByOthers(int times);

private:
    QString writeConfiguration(quint16 port);
    void generate(int flows);

    QTemporaryDir m_dir;
    QHash<QString, QString> m_server;
    QString m_database;
    QString m_password;
};

} // namespace KODMS::Bench
