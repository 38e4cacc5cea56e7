// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/ConnectionRules.h"
#include "apps/robot/PeerSocket.h"
#include "apps/robot/RequestScanner.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace KODMS::Robot {

/// One peer: reads its one request, answers it, and leaves. Works on the socket itself, because
/// the answer must still go out to a peer that has closed its own direction. Never blocks, and is
/// over within the limits whatever the peer does.
class Connection : public QObject {
    Q_OBJECT

public:
    /// Takes over the accepted socket.
    Connection(qintptr socket, const ConnectionRules &rules, const RequestHandler &handler,
               QObject *parent);
    ~Connection() override;

Q_SIGNALS:
    /// The socket is closed; the object can go.
    void finished();

private:
    enum class Stage { Reading, Silent, Answering, Lingering, Over };

    void readMore();
    void receive(const char *data, int size);
    void peerClosed();
    void writeMore();
    void timeUp();
    void decide();
    void refuse(const QString &reason);
    void answer(const RobotAnswer &answer);
    void say(const QString &job, const RobotAnswer &answer) const;
    void lingerOrFinish();
    void finish();
    void enter(Stage stage, int limit);

    PeerSocket m_socket;
    ConnectionRules m_rules;
    RequestHandler m_handler;
    QString m_peer;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
    QTimer m_limit;
    QTimer m_nextByte; ///< of a slow answer
    RequestScanner m_scanner;
    QByteArray m_toSend;
    Stage m_stage = Stage::Reading;
    bool m_isPeerDone = false; ///< it sends nothing more, and may still read
};

} // namespace KODMS::Robot
