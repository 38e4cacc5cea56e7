// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestDatabase.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

class QProcess;

namespace KODMS::Tests {

/// What one run of kodms-admin left behind.
struct AdminRun {
    int code = -1; ///< -1: it crashed, hung or could not be started
    QByteArray output;
    QByteArray errors;

    /// Standard output as one JSON object; empty when it is not exactly that.
    QJsonObject json() const;
    /// Everything, for the message of a failed comparison.
    QByteArray all() const;
};

/// A folder with its own home, configuration and installation for kodms-admin.
class AdminSandbox {
public:
    static constexpr const char *AdminLogin = "chief";
    static constexpr const char *AdminPassword = "correct horse battery";

    AdminSandbox();

    QString path(const QString &below) const { return m_dir.filePath(below); }

    QString configPath() const { return path(QStringLiteral("place/kodms.ini")); }

    /// Runs kodms-admin on this sandbox's configuration, with `input` as standard input.
    AdminRun run(const QStringList &arguments, const QByteArray &input = {}) const;
    /// The same with --json.
    AdminRun runJson(const QStringList &arguments, const QByteArray &input = {}) const;
    /// Whether a program can be given a terminal, and the termination signal: the next four.
    static bool hasTerminals();

    /// The same with a terminal on standard input, on which `typed` is typed. What the terminal
    /// showed (questions go elsewhere, so: the echo) is in `shown`.
    AdminRun runOnTerminal(const QStringList &arguments, const QByteArray &typed,
                           QByteArray *shown) const;

    /// The same, and the termination signal when the first question is there.
    AdminRun interruptAtQuestion(const QStringList &arguments) const;

    /// `init` with the administrator above.
    AdminRun init() const;

    /// True when there is a configuration that nobody but `init` has made, or a record's table.
    bool hasInstallation() const;

    /// Spoils the records so that nobody can work with them: the bytes of the embedded
    /// database's file; of a server's, which are its own affair, the table of versions.
    void damage() const;

    /// What people are told that the database is called.
    QString databaseName() const;

    /// Starts a command, sends it the termination signal after `delayMs`, and waits for its end.
    AdminRun runAndInterrupt(const QStringList &arguments, int delayMs) const;

    /// Starts a command, sends it the termination signal as soon as it watches for one, and only
    /// then calls `afterwards`, which lets go of what the command waits for.
    AdminRun runInterrupted(const QStringList &arguments,
                            const std::function<void()> &afterwards) const;

    /// A tgz with some files in it; returns its path.
    QString makeArchive(const QString &below, const QByteArray &content) const;

    /// The one value of a query on the installation's database; empty when there is none.
    QString queried(const QString &sql) const;
    /// The same, of every row.
    QStringList column(const QString &sql) const;

    /// Deletes every row of a table, whatever refers to it.
    void empty(const QString &table) const;

    /// Every file below a folder of the sandbox, with its size and time: what a refused command
    /// must not change.
    QStringList filesBelow(const QString &below) const;

    /// Writes a file below the sandbox and returns its path.
    QString write(const QString &below, const QByteArray &bytes) const;

    QStringList extraEnvironment; ///< NAME=value

private:
    static constexpr int TimeoutMs = 60'000;

    static AdminRun finish(QProcess &process);
    QStringList environment() const;

    QTemporaryDir m_dir;
    TestDatabase m_database;
};

} // namespace KODMS::Tests
