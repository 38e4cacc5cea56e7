// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Database.h"

#include "services/records/Dialect.h"
#include "services/records/Guid.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>

namespace KODMS::Services {

Database::Database(const DatabaseSettings &settings, Open mode)
    : m_settings(settings), m_dialect(Dialect::create(settings)), m_catalog(m_dialect->sqlFolder()),
      m_connectionName(QStringLiteral("kodms-") + newGuid())
{
    const QStringList missing = m_catalog.missingNames();
    if (!missing.isEmpty())
        throw SqlError(SqlError::Kind::Other, missing.join(QLatin1Char(' ')),
                       QStringLiteral("statements are missing for this database driver"));
    try {
        open(mode);
    } catch (...) {
        close();
        throw;
    }
}

Database::~Database()
{
    close();
}

void Database::open(Open mode)
{
    QSqlDatabase connection = QSqlDatabase::addDatabase(m_dialect->qtDriver(), m_connectionName);
    if (!connection.isValid())
        throw SqlError(SqlError::Kind::Lost, {},
                       QStringLiteral("the database driver is not installed: ") +
                           m_dialect->qtDriver());
    m_dialect->configure(connection, m_settings, mode == Open::Create);
    if (!connection.open())
        throw SqlError(m_dialect->kindOf(connection.lastError()), displayText(),
                       connection.lastError().databaseText());
    m_dialect->opened(connection, m_settings);
}

void Database::close()
{
    m_idle.clear();
    {
        QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
        connection.close();
    }
    QSqlDatabase::removeDatabase(m_connectionName);
}

QSqlQuery Database::prepared(const QString &sql, const QString &name)
{
    const QSqlDatabase connection = QSqlDatabase::database(m_connectionName, false);
    if (!connection.isOpen())
        throw SqlError(SqlError::Kind::Lost, name.isEmpty() ? sql : name,
                       QStringLiteral("the connection is closed"));
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    m_dialect->statementStarts();
    if (!query.prepare(sql)) {
        const QSqlError error = query.lastError();
        throw SqlError(m_dialect->kindOf(error), name.isEmpty() ? sql : name, error.databaseText());
    }
    return query;
}

SqlQuery Database::query(const char *name)
{
    const QString key = QLatin1String(name);
    QVector<QSqlQuery> &idle = m_idle[key];
    if (!idle.isEmpty())
        return {*this, idle.takeLast(), key};
    return {*this, prepared(m_catalog.statement(key), key), key};
}

void Database::keep(const QString &name, const QSqlQuery &query)
{
    m_idle[name].append(query);
}

SqlQuery Database::prepare(const QString &sql)
{
    return {*this, prepared(sql, {}), {}};
}

void Database::run(const QString &sql)
{
    prepare(sql).exec();
}

QString Database::displayText() const
{
    if (!m_settings.path.isEmpty())
        return QDir::toNativeSeparators(m_settings.path);
    return m_settings.host + QLatin1Char('/') + m_settings.name;
}

} // namespace KODMS::Services
