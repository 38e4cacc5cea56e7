// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/Options.h"

#include <QHostAddress>

namespace KODMS::Robot {

/// From the command line to the end: opens the installation, signs in, listens, works.
class RobotProgram {
public:
    // What a script can rely on.
    static constexpr int Stopped = 0; ///< by Ctrl-C or the termination signal
    static constexpr int Failed = 1;  ///< said why
    static constexpr int Usage = 2;   ///< the command line was wrong; nothing was begun

    /// Returns the process's exit code.
    static int run(const QStringList &arguments);

private:
    static Services::Outcome signIn(const Options &options);
    static Services::Outcome work(const Options &options);
    static QHostAddress place();
};

} // namespace KODMS::Robot
