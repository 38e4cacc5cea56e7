// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/faults/FaultySqlDriver.h"

#include <QSqlQuery>
#include <QSqlResult>

#include <functional>

namespace KODMS::Tests {

/// One statement of a FaultySqlDriver. Each execution is a call of the plan.
class FaultySqlResult final : public QSqlResult {
public:
    explicit FaultySqlResult(const FaultySqlDriver &driver);

protected:
    bool prepare(const QString &statement) override;
    bool exec() override;
    bool reset(const QString &statement) override;

    QVariant data(int column) override { return m_inner.value(column); }

    bool isNull(int column) override { return m_inner.isNull(column); }

    bool fetch(int) override { return false; } // forward only

    bool fetchFirst() override;
    bool fetchNext() override;

    bool fetchLast() override { return false; }

    int size() override { return -1; }

    int numRowsAffected() override { return m_inner.numRowsAffected(); }

    QVariant lastInsertId() const override { return m_inner.lastInsertId(); }

    QSqlRecord record() const override;

    void detachFromResultSet() override { m_inner.finish(); }

private:
    bool takeTurn(const std::function<bool()> &execute);
    void bindValues();
    bool carryOut(const std::function<bool()> &execute);
    bool fail(const char *text, const char *code);
    bool loseConnection();

    FaultySqlDriver *m_driver;
    QSqlQuery m_inner;
};

} // namespace KODMS::Tests
