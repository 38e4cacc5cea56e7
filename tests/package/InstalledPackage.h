// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace KODMS::Tests {

/// The package, installed into a folder of its own, and programs that run against it.
class InstalledPackage {
public:
    QString path(const QString &below) const { return m_dir.filePath(below); }

    QString prefix() const { return path(QStringLiteral("prefix")); }

    /// Runs a program in the folder; false when its exit code is not 0. What it
    /// wrote is in `output` (standard output) and `errors`.
    bool run(const QString &program, const QStringList &arguments, int timeoutMs = 240'000);

    /// For the message of a failed test.
    const char *everythingSaid();

    QByteArray output;
    QByteArray errors;
    QStringList environment; ///< NAME=value, on top of the test's own

private:
    QTemporaryDir m_dir;
    QByteArray m_everything;
};

} // namespace KODMS::Tests
