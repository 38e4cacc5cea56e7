// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace KODMS::Robot {

/// Ctrl-C and the termination signal end the application's event loop; the second one ends the
/// process at once. One object a process.
class QuitOnSignal : public QObject {
    Q_OBJECT

public:
    QuitOnSignal();

    /// False when the system gave nothing to do it with; then the signals end the process at once.
    bool isWatching() const { return m_isWatching; }

private:
    bool m_isWatching = false;
};

} // namespace KODMS::Robot
