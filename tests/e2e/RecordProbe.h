// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/PlainConnection.h"

#include <QString>
#include <QStringList>

namespace KODMS::Tests {

/// Reads the database of a running installation past its services.
class RecordProbe {
public:
    explicit RecordProbe(const Services::DatabaseSettings &place) : m_connection(place) {}

    /// The first column of every row; a statement that fails ends the process.
    QStringList texts(const QString &statement) const { return m_connection.texts(statement); }

    QString text(const QString &statement) const;
    int number(const QString &statement) const;

    /// The job names of the flows, newest first, that meet a condition on
    /// f (flow), j (job), o (executor) and p (pre-checker); empty: all.
    QStringList flows(const QString &where) const;

private:
    PlainConnection m_connection;
};

} // namespace KODMS::Tests
