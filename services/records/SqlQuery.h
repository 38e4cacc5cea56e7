// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

class Database;

/// One prepared statement at work. Finished in its destructor, so that a result
/// that was not read to its end never holds the database. Columns are read by
/// name. Every failure throws SqlError. Must not outlive its Database.
///
/// When the connection was made anew meanwhile, a result that was not read is lost,
/// and exec() prepares the statement again.
class SqlQuery {
public:
    ~SqlQuery();

    SqlQuery(SqlQuery &&other) noexcept;
    SqlQuery &operator=(SqlQuery &&) = delete;
    SqlQuery(const SqlQuery &) = delete;
    SqlQuery &operator=(const SqlQuery &) = delete;

    /// `name` is ":name" as in the statement. A QString is a text, also when it is
    /// null; QVariant() is null.
    SqlQuery &bind(const char *name, const QVariant &value);
    SqlQuery &bind(int position, const QVariant &value);
    /// Binds null when `id` is 0, which means "none" outside the database.
    SqlQuery &bindId(const char *name, int id);

    /// Runs the statement; may be called again after binding other values.
    SqlQuery &exec();

    /// Moves to the next row; false when there is none.
    bool next();

    /// Empty for null.
    QString text(const char *column) const;
    /// 0 for null.
    int number(const char *column) const;
    qint64 int64(const char *column) const;
    bool isNull(const char *column) const;

    // For long results: the place of a column, and the value there.
    int placeOf(const char *column) const;

    QVariant valueAt(int place) const { return current().value(place); }

    int rowsAffected() const { return current().numRowsAffected(); }

private:
    friend class Database;

    /// `name` empty: not from the catalogue, not kept.
    SqlQuery(Database &database, const QSqlQuery &query, const QString &name);

    QVariant value(const char *column) const;
    QVariant suited(const QVariant &value) const;
    const QSqlQuery &current() const;
    bool isStale() const;
    void prepareAgain();
    void execOnce();
    void execSafely();
    [[noreturn]] void fail() const;

    Database *m_database;
    QSqlQuery m_query;
    QString m_name;
    int m_generation;
    QHash<QByteArray, QVariant> m_named; ///< bound values, for a server: to bind them again
    QVector<QVariant> m_placed;
    mutable QSqlRecord m_record; ///< the result's columns, once somebody has asked for one
    mutable QHash<QByteArray, int> m_columns;
};

} // namespace KODMS::Services
