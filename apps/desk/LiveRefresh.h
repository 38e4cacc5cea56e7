// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QTimer>

namespace KODMS::Host {

class Preferences;

/// Has the changes of others looked for while the window can be seen, and, when the user
/// prefers so, refreshes the desks because of them as soon as nothing is in the way.
class LiveRefresh : public QObject {
    Q_OBJECT

public:
    /// `desks` holds the desks' tables.
    LiveRefresh(QWidget &window, QWidget &desks, Preferences &preferences, int userId);
    ~LiveRefresh() override;

    /// Remembered for this user.
    void setAutomatic(bool automatic);

Q_SIGNALS:
    void refreshRequested();

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void watch();
    void wait();
    void refreshIfQuiet();

    QWidget &m_window;
    QWidget &m_desks;
    Preferences &m_preferences;
    int m_userId;
    bool m_isAutomatic;
    QTimer m_waiting; ///< for a moment in which rows may move
};

} // namespace KODMS::Host
