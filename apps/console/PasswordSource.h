// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Console {

/// Where a password comes from: the named file ("-": standard input), else the terminal.
/// Never the command line, which other users of the machine can read.
class PasswordSource {
public:
    /// `file` as given with --password-file; empty: ask.
    explicit PasswordSource(const QString &file) : m_file(file) {}

    /// A password that exists: asked for once.
    Services::Result<QString> existing(const QString &question) const;
    /// A password that is being chosen: asked for twice, and both must agree.
    Services::Result<QString> chosen(const QString &question) const;

private:
    Services::Result<QString> fromFile() const;
    Services::Result<QString> asked(const QString &question) const;

    QString m_file;
};

} // namespace KODMS::Console
