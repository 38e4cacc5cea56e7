// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QStringList>

namespace KODMS::Tests {

/// Qt's driver of the engine in force with a fault plan before it: it takes that
/// driver's name, so that whoever opens a database gets it.
class FaultySqlDriver final : public QSqlDriver {
    Q_OBJECT

public:
    /// From now on, in this process.
    static void install();

    ~FaultySqlDriver() override;

    bool hasFeature(DriverFeature feature) const override;
    bool open(const QString &name, const QString &user, const QString &password,
              const QString &host, int port, const QString &options) override;
    void close() override;
    QSqlResult *createResult() const override;
    QStringList tables(QSql::TableType type) const override;
    QVariant handle() const override;

    /// The connection that does the work.
    const QSqlDatabase &inner() const { return m_inner; }

    /// As a server that is gone.
    void lose();

private:
    QSqlDatabase m_inner;
};

} // namespace KODMS::Tests
