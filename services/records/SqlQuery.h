// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

namespace KODMS::Services {

class Database;

/// One prepared statement at work. Finished in its destructor, so that a result
/// that was not read to its end never holds the database. Columns are read by
/// name. Every failure throws SqlError. Must not outlive its Database.
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

    QVariant valueAt(int place) const { return m_query.value(place); }

    /// Key of the row that the last insert made.
    qint64 lastInsertId() const;

    int rowsAffected() const { return m_query.numRowsAffected(); }

private:
    friend class Database;

    /// `name` empty: not from the catalogue, not kept.
    SqlQuery(Database &database, const QSqlQuery &query, const QString &name);

    QVariant value(const char *column) const;
    [[noreturn]] void fail() const;

    Database *m_database;
    QSqlQuery m_query;
    QString m_name;
    mutable QHash<QByteArray, int> m_columns;
};

} // namespace KODMS::Services
