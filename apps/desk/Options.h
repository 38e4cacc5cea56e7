// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace KODMS::Host {

/// What the command line asks for.
struct Options {
    QString configPath;     ///< empty: the service library's default place
    QString language;       ///< "zh", "en" or empty: as remembered
    QString screenshotsDir; ///< not empty: render the windows and leave
    double scale = 0;       ///< of the screenshots; 0 = as the screen has it
    bool exitAfterShow = false;
    bool showHelp = false;
    bool showVersion = false;
    QString error; ///< not empty: the command line is wrong

    /// Needs no application object, because some options decide how it is made.
    static Options parse(const QStringList &arguments);
    static QString helpText();
};

} // namespace KODMS::Host
