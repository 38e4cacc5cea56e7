// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/UserAdmin.h"
#include "tests/e2e/DeskUser.h"

#include <QVector>

#include <functional>

class QDialog;

namespace KODMS::Host {
class MainWindow;
}

namespace KODMS::Tests {

class LifeHouse;

/// An entry of the host's history panel, as it is shown.
struct ToldDeed {
    QString time;
    QString who;
    QString action;
    QString content;
};

/// Somebody signed in at the host, who works with mouse and keys.
class HostUser {
public:
    HostUser(LifeHouse &house, const Services::NewUser &person);

    Host::MainWindow &window() const { return m_window; }

    /// Brings the desk to the front, with the latest rows.
    DeskUser jobFlows() const;
    DeskUser origFiles() const;

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

    /// Presses a key that opens a dialog, and goes on in the dialog.
    void pressAndAnswer(Qt::Key key, Qt::KeyboardModifiers modifiers,
                        const std::function<void(QDialog &)> &answer) const;

    /// The history panel's entries of the job in this row of the job-flow desk, the
    /// earliest first.
    QVector<ToldDeed> history(const DeskUser &jobFlows, int row) const;

private:
    DeskUser desk(Qt::Key key) const;

    LifeHouse &m_house;
    Services::NewUser m_person;
    Host::MainWindow &m_window;
};

/// Does what opens a dialog, and goes on in the dialog. One that never comes ends the process.
void actAndAnswer(const std::function<void()> &act, const std::function<void(QDialog &)> &answer);

/// Types a path into a dialog that asks for a file, and accepts it.
void chooseFile(QDialog &dialog, const QString &path);

/// Enters text as an input method does: all at once.
void commitText(QWidget &field, const QString &text);

} // namespace KODMS::Tests
