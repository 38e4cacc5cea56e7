// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace KODMS::Services {

/// Tells who works on somebody's behalf that somebody else acts now, or nobody.
/// GUI thread.
class SessionSignals final : public QObject {
    Q_OBJECT

public:
    static SessionSignals &instance();

Q_SIGNALS:
    /// A user has signed in or out, or the services have stopped.
    void actorChanged();

private:
    SessionSignals() = default;
};

} // namespace KODMS::Services
