// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/RecordProbe.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace KODMS::Tests {

RecordProbe::RecordProbe(const QString &configPath) : m_connection(QStringLiteral("record probe"))
{
    // A sample installation keeps its database beside its configuration.
    const QString path = QFileInfo(configPath).dir().filePath(QStringLiteral("kodms.db"));
    auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(path);
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!database.open())
        qFatal("the database of %s cannot be read", qPrintable(configPath));
}

RecordProbe::~RecordProbe()
{
    QSqlDatabase::database(m_connection).close();
    QSqlDatabase::removeDatabase(m_connection);
}

QStringList RecordProbe::texts(const QString &statement) const
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    if (!query.exec(statement))
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    QStringList texts;
    while (query.next())
        texts << query.value(0).toString();
    return texts;
}

QString RecordProbe::text(const QString &statement) const
{
    return texts(statement).value(0);
}

int RecordProbe::number(const QString &statement) const
{
    return text(statement).toInt();
}

QStringList RecordProbe::flows(const QString &where) const
{
    QString statement =
        QStringLiteral("SELECT f.job_name FROM job_flows f JOIN jobs j ON j.name = f.job_name "
                       "LEFT JOIN orig_file_assign o ON o.flow_id = f.id "
                       "LEFT JOIN pre_check_assign p ON p.flow_id = f.id");
    if (!where.isEmpty())
        statement += QStringLiteral(" WHERE ") + where;
    return texts(statement + QStringLiteral(" ORDER BY f.create_time DESC, f.id DESC"));
}

} // namespace KODMS::Tests
