// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultySqlDriver.h"

#include "tests/faults/FaultPlan.h"
#include "tests/faults/FaultySqlResult.h"
#include "tests/support/TestDatabase.h"

#include <QSqlError>

namespace KODMS::Tests {

namespace {

QString driverName()
{
    return TestDatabase::isServer() ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE");
}

void standInFront()
{
    QSqlDatabase::registerSqlDriver(driverName(), new QSqlDriverCreator<FaultySqlDriver>);
}

/// A connection that nobody finds by name: the list of names is locked while one of its
/// connections goes.
class UnnamedDatabase final : public QSqlDatabase {
public:
    explicit UnnamedDatabase(const QString &driver) : QSqlDatabase(driver) {}
};

/// A connection through the driver that was there before.
QSqlDatabase makeInner()
{
    QSqlDatabase::registerSqlDriver(driverName(), nullptr);
    QSqlDatabase inner = UnnamedDatabase(driverName());
    standInFront();
    return inner;
}

} // namespace

void FaultySqlDriver::install()
{
    standInFront();
}

FaultySqlDriver::~FaultySqlDriver()
{
    FaultySqlDriver::close();
}

bool FaultySqlDriver::hasFeature(DriverFeature feature) const
{
    switch (feature) {
    case PreparedQueries:
    case NamedPlaceholders:
    case PositionalPlaceholders:
    case Unicode:
    case LastInsertId:
        return true;
    default:
        return false;
    }
}

bool FaultySqlDriver::open(const QString &name, const QString &user, const QString &password,
                           const QString &host, int port, const QString &options)
{
    close();
    m_inner = makeInner();
    m_inner.setDatabaseName(name);
    m_inner.setUserName(user);
    m_inner.setPassword(password);
    m_inner.setHostName(host);
    m_inner.setPort(port);
    m_inner.setConnectOptions(options);
    const bool isOpened = m_inner.open();
    setLastError(m_inner.lastError());
    setOpen(isOpened);
    setOpenError(!isOpened);
    return isOpened;
}

void FaultySqlDriver::close()
{
    lose();
    m_inner = QSqlDatabase();
}

void FaultySqlDriver::lose()
{
    setOpen(false);
    m_inner.close();
}

QSqlResult *FaultySqlDriver::createResult() const
{
    return new FaultySqlResult(*this);
}

QStringList FaultySqlDriver::tables(QSql::TableType type) const
{
    return m_inner.tables(type);
}

QVariant FaultySqlDriver::handle() const
{
    return m_inner.driver()->handle();
}

} // namespace KODMS::Tests
