// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "tests/desks/DeskTest.h"

#include <QTemporaryDir>

namespace KODMS::Tests {

class RobotPeer;

/// A window that gives row 7, job A1B000123 of the flow "flow7", another file for
/// user 42, with folders of its own; the services answer the GUIDs g1 and g2.
class ModifyFileWorld {
public:
    ModifyFileWorld();

    /// Presses the button for files or for folders, whichever `path` is, and chooses it.
    void choose(const QString &path) const;

    /// Presses the import button.
    void import() const;

    QString path(const QString &name) const { return m_dir.filePath(name); }

    /// The path of a file in the staging folder.
    QString staged(const QString &name) const { return path(QStringLiteral("staging/")) + name; }

    /// A file that contains its own name; the path.
    QString made(const QString &name) const;

    /// A folder; the path.
    QString madeFolder(const char *name) const;

    std::unique_ptr<UI::DMS_ModifyFile_Widget> window;

private:
    QTemporaryDir m_dir;
};

/// The configuration names this peer as the CAM robot.
void listenAs(const RobotPeer &robot);

/// The operations that were called, without their classes.
QStringList callNames();

/// What a file contains; "none" when there is none.
QByteArray contents(const QString &path);

} // namespace KODMS::Tests
