// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Dialect.h"

#include <optional>

namespace KODMS::Services {

/// The database server: many desks on one set of records.
class PostgresDialect final : public Dialect {
public:
    PostgresDialect();

    QString sqlFolder() const override;
    QString qtDriver() const override;
    void configure(QSqlDatabase &connection, const DatabaseSettings &settings,
                   bool create) const override;
    void opened(QSqlDatabase &connection, const DatabaseSettings &settings) override;
    SqlError::Kind kindOf(const QSqlError &error) const override;
    QStringList beginWrite() const override;
    bool hasForgottenStatement(const QSqlError &error) const override;
    void setConnectTimeout(int milliseconds) override;
    QString fateOf(const QString &transactionId) const override;
    QString beginRead() const override;

    bool isServer() const override { return true; }

    bool tellsMoments() const override { return true; }

    bool errorEndsTransaction() const override { return true; }

    QString placeText(const DatabaseSettings &settings) const override;
    QString snapshotInto(const QString &path) const override;
    QString identityColumn() const override;
    QString dropOf(const QString &createStatement) const override;
    QString containsText(const QString &column, const QString &text, QString *bound) const override;
    QString numberInText(const QString &column) const override;
    QString boundNumber() const override;
    QString nullsOrder(bool isDescending) const override;
    void setStatementTimeout(int milliseconds) override;

    bool listen(const std::function<void()> &wake) override;

    void statementStarts() override {}

private:
    void subscribe();

    QString m_connectionName;
    std::function<void()> m_wake; ///< empty: nobody listens
    int m_connectTimeout;         ///< seconds
    int m_busyTimeoutMs = 0;
    std::optional<int> m_timeoutMs; ///< when it is not the configured one
    int m_configuredTimeoutMs = 0;
    int m_silenceTimeoutMs = 0;
};

} // namespace KODMS::Services
