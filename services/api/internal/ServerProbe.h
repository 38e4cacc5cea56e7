// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QTcpSocket>

namespace KODMS::Services {

/// Finds out whether a server takes connections, without waiting for it. Needs an event loop.
class ServerProbe : public QObject {
    Q_OBJECT

public:
    ServerProbe();

    /// A host without a name is this machine, of which nobody has to ask.
    void ask(const QString &host, int port);

Q_SIGNALS:
    /// Not when nobody is there.
    void answered();

private:
    QTcpSocket m_socket;
};

} // namespace KODMS::Services
