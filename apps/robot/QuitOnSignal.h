// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace KODMS::Robot {

/// Ctrl-C and the termination signal end the application's event loop; the second one ends the
/// process at once. One object a process.
class QuitOnSignal : public QObject {
    Q_OBJECT

public:
    QuitOnSignal();

    /// False when the system gave no pipe for it; then the signals end the process at once.
    bool isWatching() const { return m_notifier != nullptr; }

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace KODMS::Robot
