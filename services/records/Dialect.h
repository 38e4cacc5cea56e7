// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlError.h"

#include <QString>

#include <memory>

class QSqlDatabase;
class QSqlError;

namespace KODMS::Services {

struct DatabaseSettings;

/// What one database engine does in its own way. Everything else in the records
/// speaks to all engines alike. One object serves one connection.
class Dialect {
public:
    virtual ~Dialect() = default;

    /// The dialect of the configured driver. Throws SqlError when it is not known.
    static std::unique_ptr<Dialect> create(const DatabaseSettings &settings);

    /// Folder of the engine's own statements below the catalogue's root.
    virtual QString sqlFolder() const = 0;

    virtual QString qtDriver() const = 0;

    /// Before opening: looks at the place, sets name and options of the
    /// connection. Throws SqlError when the place cannot be used; `create` allows
    /// a database that is not there yet.
    virtual void configure(QSqlDatabase &connection, const DatabaseSettings &settings,
                           bool create) const = 0;

    /// Right after opening: the connection's own settings, first look at the file.
    /// Throws SqlError.
    virtual void opened(QSqlDatabase &connection, const DatabaseSettings &settings) = 0;

    virtual SqlError::Kind kindOf(const QSqlError &error) const = 0;

    /// Starts a transaction that will write, and waits for other writers.
    virtual QString beginWrite() const = 0;

    /// Starts a transaction that only reads one state of the database.
    virtual QString beginRead() const = 0;

    /// Writes one moment of the whole database into a new file of the engine's own
    /// form, while others write; empty when the engine cannot.
    virtual QString snapshotInto(const QString &path) const = 0;

    /// Type of a key column that the engine counts up and never gives out twice.
    virtual QString identityColumn() const = 0;

    /// Undoes a statement that makes an index or a trigger.
    virtual QString dropOf(const QString &createStatement) const = 0;

    /// True where `column` contains the text that is bound to the condition's one
    /// "?", in either case for Latin letters, every other character as it stands.
    /// `bound` receives what to bind for `text`.
    virtual QString containsText(const QString &column, const QString &text,
                                 QString *bound) const = 0;

    /// The number that a text column holds in decimal digits, else null.
    virtual QString numberInText(const QString &column) const = 0;

    /// The time-out of the statements that start from now on; 0 = none.
    virtual void setStatementTimeout(int milliseconds) = 0;

    /// Called before each statement: its time-out counts from here.
    virtual void statementStarts() = 0;
};

} // namespace KODMS::Services
