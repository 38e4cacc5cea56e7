// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Robot {

/// One line an event on standard error, with the time (UTC) before it.
class RobotLog {
public:
    static void write(const QString &line);

    /// A name from outside, for a log line: in quotes, shortened, with every character that could
    /// end the line, close the quotes or hide something written as its number.
    static QString quoted(const QString &name);
};

} // namespace KODMS::Robot
