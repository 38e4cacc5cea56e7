// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

namespace KODMS::Tests {

/// Reads and changes records past the services, on either engine. A statement that
/// fails ends the process.
class PlainConnection {
public:
    explicit PlainConnection(const Services::DatabaseSettings &settings);
    ~PlainConnection();

    PlainConnection(const PlainConnection &) = delete;
    PlainConnection &operator=(const PlainConnection &) = delete;

    QSqlDatabase database() const { return QSqlDatabase::database(m_name); }

    void run(const QString &statement) const;
    /// From now on this connection may delete what other records refer to.
    void ignoreReferences() const;

    /// From now on a change is refused with `text`, for example "UPDATE OF check_flag ON
    /// jobs"; `when` is a condition on the row NEW.
    void refuse(const QString &change, const QString &text, const QString &when = {}) const;
    /// Allows it again.
    void allow(const QString &change) const;

    /// The first column of every row.
    QStringList texts(const QString &statement) const;
    /// Every row, its columns side by side, in the order of these texts.
    QStringList sortedRows(const QString &statement) const;

    /// Returns when somebody waits for the turn of a writer to this database, which is a
    /// server's; after ten seconds all the same.
    void awaitWaitingWriter() const;

    /// The names of all tables, in their order.
    QStringList tables() const;

private:
    bool isServer() const;

    QString m_name;
};

} // namespace KODMS::Tests
