// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlError.h"

#include <QString>
#include <QStringList>

#include <functional>
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

    /// So long the openings from now on may wait for a server.
    virtual void setConnectTimeout(int milliseconds) = 0;

    /// Right after opening: the connection's own settings, first look at the file.
    /// Throws SqlError.
    virtual void opened(QSqlDatabase &connection, const DatabaseSettings &settings) = 0;

    virtual SqlError::Kind kindOf(const QSqlError &error) const = 0;

    /// True when a prepared statement only has to be prepared once more.
    virtual bool hasForgottenStatement(const QSqlError &error) const = 0;

    /// Start a transaction that will write, and wait for other writers. Where one may be saved
    /// although its connection is lost, a result's column transaction_id names it.
    virtual QStringList beginWrite() const = 0;

    /// Gives in its column fate "committed" or "aborted" for a transaction that another
    /// connection has named, once no writer is at work; anything else when that is not known.
    virtual QString fateOf(const QString &transactionId) const = 0;

    /// Starts a transaction that only reads one state of the database.
    virtual QString beginRead() const = 0;

    /// True when the database is another program's, reached over a network: the connection
    /// can be lost and made anew, and foreign programs may write beside ours.
    virtual bool isServer() const = 0;

    /// True where each statement can tell the moment that it has read, in a column of that
    /// name: statements of one moment have read one state of the database. A moment without a
    /// name equals no other.
    virtual bool tellsMoments() const { return false; }

    /// True when nothing but an undo is possible in a transaction after an error.
    virtual bool errorEndsTransaction() const = 0;

    /// What people call the place: the file, or server and name. Never the password.
    virtual QString placeText(const DatabaseSettings &settings) const = 0;

    /// Writes one moment of the whole database into a new file of the engine's own
    /// form, while others write; empty for a server.
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

    /// The place of a bound number that may be larger than its column could hold.
    virtual QString boundNumber() const = 0;

    /// What has to follow the direction of an order, so that nulls come before
    /// everything else in ascending order and after it in descending order.
    virtual QString nullsOrder(bool isDescending) const = 0;

    /// The time-out of the statements that start from now on; 0 = none. Outside of
    /// transactions. Throws SqlError.
    virtual void setStatementTimeout(int milliseconds) = 0;

    /// Has `wake` called from this thread's event loop whenever another connection has
    /// told of changes, and as soon as the connection was made anew, for it may have been
    /// told meanwhile; an empty one ends it. False when the engine tells nobody. Throws SqlError.
    virtual bool listen(const std::function<void()> & /*wake*/) { return false; }

    /// Called before each statement: its time-out counts from here.
    virtual void statementStarts() = 0;
};

} // namespace KODMS::Services
