// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Dialect.h"
#include "services/records/SqliteStatementLimit.h"

namespace KODMS::Services {

/// The embedded engine: one file in WAL mode, acknowledged means durable.
class SqliteDialect final : public Dialect {
public:
    QString sqlFolder() const override;
    QString qtDriver() const override;
    void configure(QSqlDatabase &connection, const DatabaseSettings &settings,
                   bool create) const override;
    void opened(QSqlDatabase &connection, const DatabaseSettings &settings) override;
    SqlError::Kind kindOf(const QSqlError &error) const override;
    QStringList beginWrite() const override;

    void setConnectTimeout(int /*milliseconds*/) override {}

    bool hasForgottenStatement(const QSqlError & /*error*/) const override { return false; }

    QString fateOf(const QString & /*transactionId*/) const override { return {}; }

    QString beginRead() const override;

    bool isServer() const override { return false; }

    bool errorEndsTransaction() const override { return false; }

    QString placeText(const DatabaseSettings &settings) const override;
    QString snapshotInto(const QString &path) const override;
    QString identityColumn() const override;
    QString dropOf(const QString &createStatement) const override;
    QString containsText(const QString &column, const QString &text, QString *bound) const override;
    QString numberInText(const QString &column) const override;
    QString boundNumber() const override;
    QString nullsOrder(bool isDescending) const override;
    void setStatementTimeout(int milliseconds) override;
    void statementStarts() override;

    /// True for the types of file system that computers share over a network:
    /// write-ahead logging does not work there.
    static bool isNetworkFileSystem(const QByteArray &type);

private:
    void checkPlace(const DatabaseSettings &settings, bool create) const;
    void prepare(QSqlDatabase &connection, const DatabaseSettings &settings);
    void runPragma(QSqlDatabase &connection, const QString &pragma) const;

    SqliteStatementLimit m_limit;
};

} // namespace KODMS::Services
