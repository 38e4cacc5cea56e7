// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultySqlResult.h"

#include "tests/faults/FaultPlan.h"
#include "tests/support/TestDatabase.h"

#include <QSqlError>
#include <QSqlRecord>

#include <stdexcept>

namespace KODMS::Tests {

FaultySqlResult::FaultySqlResult(const FaultySqlDriver &driver)
    : QSqlResult(&driver), m_driver(const_cast<FaultySqlDriver *>(&driver)), m_inner(driver.inner())
{
    m_inner.setForwardOnly(true);
}

bool FaultySqlResult::prepare(const QString &statement)
{
    const bool isPrepared = m_inner.prepare(statement);
    setLastError(m_inner.lastError());
    return isPrepared;
}

/// A server prepares no statement that begins or ends a transaction.
bool FaultySqlResult::reset(const QString &statement)
{
    return takeTurn([this, statement] { return m_inner.exec(statement); });
}

bool FaultySqlResult::exec()
{
    return takeTurn([this] {
        bindValues();
        return m_inner.exec();
    });
}

bool FaultySqlResult::takeTurn(const std::function<bool()> &execute)
{
    setActive(false);
    setAt(QSql::BeforeFirstRow);
    switch (FaultPlan::next(FaultLayer::Records)) {
    case FaultPlan::Turn::Works:
        break;
    case FaultPlan::Turn::Fails:
        return TestDatabase::isServer() ? fail("could not read block 0 in file", "58030")
                                        : fail("disk I/O error", "10");
    case FaultPlan::Turn::Throws:
        throw std::runtime_error("the records have thrown");
    case FaultPlan::Turn::IsLost:
        return loseConnection();
    case FaultPlan::Turn::LosesItsAnswer:
        carryOut(execute);
        return loseConnection();
    }
    return carryOut(execute);
}

void FaultySqlResult::bindValues()
{
    for (int i = 0; i < boundValueCount(); ++i) {
        const QString name = boundValueName(i);
        if (name.isEmpty())
            m_inner.bindValue(i, boundValue(i));
        else
            m_inner.bindValue(name, boundValue(i));
    }
}

bool FaultySqlResult::carryOut(const std::function<bool()> &execute)
{
    const bool isDone = execute();
    setLastError(m_inner.lastError());
    setSelect(m_inner.isSelect());
    setActive(isDone);
    if (isDone && m_inner.lastQuery() == QLatin1String("COMMIT"))
        FaultPlan::committed();
    return isDone;
}

bool FaultySqlResult::fail(const char *text, const char *code)
{
    setLastError(QSqlError(QString(), QString::fromLatin1(text), QSqlError::StatementError,
                           QString::fromLatin1(code)));
    return false;
}

bool FaultySqlResult::loseConnection()
{
    m_driver->lose();
    return TestDatabase::isServer() ? fail("server closed the connection unexpectedly", "")
                                    : fail("unable to open database file", "14");
}

bool FaultySqlResult::fetchFirst()
{
    if (!m_inner.next()) {
        setLastError(m_inner.lastError());
        return false;
    }
    setAt(0);
    return true;
}

bool FaultySqlResult::fetchNext()
{
    if (!m_inner.next()) {
        setLastError(m_inner.lastError());
        return false;
    }
    setAt(at() + 1);
    return true;
}

QSqlRecord FaultySqlResult::record() const
{
    return m_inner.record();
}

} // namespace KODMS::Tests
