// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace KODMS::Tests {

/// Reads the database of a running embedded installation past its services.
class RecordProbe {
public:
    /// `configPath` is the installation's configuration file.
    explicit RecordProbe(const QString &configPath);
    ~RecordProbe();

    RecordProbe(const RecordProbe &) = delete;
    RecordProbe &operator=(const RecordProbe &) = delete;

    /// The first column of every row; a statement that fails ends the process.
    QStringList texts(const QString &statement) const;
    QString text(const QString &statement) const;
    int number(const QString &statement) const;

    /// The job names of the flows, newest first, that meet a condition on
    /// f (flow), j (job), o (executor) and p (pre-checker); empty: all.
    QStringList flows(const QString &where) const;

private:
    QString m_connection;
};

} // namespace KODMS::Tests
