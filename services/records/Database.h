// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/records/SqlCatalog.h"
#include "services/records/SqlError.h"
#include "services/records/SqlQuery.h"

#include <QElapsedTimer>
#include <QHash>
#include <QString>
#include <QVector>

#include <memory>

class QSqlError;

namespace KODMS::Services {

class Dialect;
class RecoveryPoint;
class WriteListener;

/// One open connection to the records. Belongs to the thread that made it; its
/// connection is closed and forgotten in the destructor.
///
/// The connection to a server may be lost at any time. What is then not inside a
/// transaction makes it anew and goes on; what is inside one fails, and so the
/// whole transaction. A change outside of transactions becomes one of its own.
class Database {
public:
    enum class Open {
        Existing, ///< refuses a database that is not there
        Create    ///< makes an empty one when there is none
    };

    /// Opens the connection. Throws SqlError: not there, not a database, damaged,
    /// not writable, on a network folder, or without a statement of the catalogue.
    explicit Database(const DatabaseSettings &settings, Open mode = Open::Existing);
    ~Database();

    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// The catalogue's statement of that name, prepared once and used again.
    SqlQuery query(const char *name);

    /// The same for a result as long as a table: its rows come while they are read, and
    /// nothing else may run on this connection until it is gone.
    SqlQuery longQuery(const char *name);

    /// A statement that is not in the catalogue: built for one search, or a
    /// schema's script.
    SqlQuery prepare(const QString &sql);

    /// Runs a statement without values or result.
    void run(const QString &sql);

    const SqlCatalog &catalog() const { return m_catalog; }

    Dialect &dialect() { return *m_dialect; }

    const DatabaseSettings &settings() const { return m_settings; }

    bool isInTransaction() const { return m_transactionDepth > 0; }

    /// False also while a transaction is open that could not be undone.
    bool isOutsideTransactions() const { return m_transactionDepth == 0 && !m_isAbandoned; }

    /// Null when nobody wants to know. Not owned.
    WriteListener *writeListener() const { return m_writeListener; }

    void setWriteListener(WriteListener *listener) { m_writeListener = listener; }

    /// True inside a transaction whose changes nobody else sees yet.
    bool isWriting() const { return m_transactionDepth > 0 && m_isWriting; }

    /// What people call this database: the file, or server and name.
    QString displayText() const;

    /// Gives the connection to a server up, with what is open in it: a long result that is not
    /// read to its end would come whole before anything else. What comes next makes a new one,
    /// as after a loss. Without effect on the embedded engine, which gives no row before it is
    /// asked for.
    void abandon();

    /// Counts up each time the connection was made anew.
    int generation() const { return m_generation; }

    enum class Reopening {
        Patient, ///< a server may need seconds to come up again; once it was waited for in
                 ///< vain, each of the following actions makes one attempt
        Once,    ///< by one attempt
        Never    ///< what finds the connection lost fails at once
    };

    /// How a lost connection is made anew; patiently unless somebody says otherwise.
    void setReopening(Reopening reopening) { m_reopening = reopening; }

private:
    friend class RecoveryPoint;
    friend class SqlQuery;
    friend class Transaction;

    enum class Result { Kept, Passing }; ///< whether other statements may run beside it

    QSqlQuery prepared(const QString &sql, const QString &name, Result result = Result::Kept);
    QSqlQuery prepareOnce(const QString &sql, const QString &name, Result result);
    void runOnce(const QString &sql);
    /// The value in the first row of the result, null when there is no such column or row.
    QString textOnce(const QString &sql, const QString &column);
    void keep(const QString &name, const QSqlQuery &query);
    void discard(const QSqlQuery &query);
    void open(Open mode);
    void close();
    void reopen();
    void reopenWithin(int longest);
    int longestWait() const;

    /// After an error: true when the connection was made anew, and the statement may
    /// be run again. Throws SqlError when it cannot be made.
    bool recovers(const SqlError &error);
    SqlError failure(const QSqlError &error, const QString &statement);
    bool needsTransaction(const QString &sql) const;
    static bool isChange(const QString &sql);
    void transactionGoesOn();

    DatabaseSettings m_settings;
    std::unique_ptr<Dialect> m_dialect;
    SqlCatalog m_catalog;
    QString m_connectionName;
    QHash<QString, QVector<QSqlQuery>> m_idle;
    WriteListener *m_writeListener = nullptr;
    int m_transactionDepth = 0;
    bool m_isWriting = false;
    bool m_isAbandoned = false; ///< a rollback failed, and no transaction began since
    bool m_isBroken = false;    ///< the transaction can only be undone
    QString m_transactionId;    ///< of a writing one, where the engine names them
    int m_generation = 0;
    Reopening m_reopening = Reopening::Patient;
    QElapsedTimer m_sinceFailure;   ///< valid after a patient reopening that failed
    QVector<QSqlQuery> m_discarded; ///< statements that are done with
};

} // namespace KODMS::Services
