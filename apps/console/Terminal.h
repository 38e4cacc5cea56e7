// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Console {

/// The terminal on standard input, for questions; they are written to standard error,
/// so that standard output carries results only.
class Terminal {
public:
    /// False when standard input is a file or a pipe: then nobody can be asked.
    static bool isInteractive();

    /// Asks and reads one line; with `secret`, what is typed is not shown. False when
    /// the input ended or Ctrl-C was pressed.
    static bool ask(const QString &question, bool secret, QString *answer);

    /// The first line of standard input, without its end.
    static bool readLine(QString *line);

    /// The text as one line that leaves the terminal as it is: it may quote what customers
    /// named their files. A control character becomes a question mark.
    static QString printable(const QString &text);

    /// Whether somebody sees standard error as it is written.
    static bool isErrorShown();
    /// In place of what stands in the terminal's present line; only where isErrorShown().
    static void showForNow(const QString &line);

    static void writeError(const QString &line);
    static void writeOutput(const QByteArray &bytes);
};

} // namespace KODMS::Console
