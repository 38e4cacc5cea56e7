// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SchemaMigrator.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/TimeText.h"
#include "services/records/Transaction.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SchemaMigrator", text);
}

template <typename Step> Outcome guarded(const char *operation, const QString &database, Step step)
{
    try {
        return step();
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote()
            << operation << QStringLiteral("[%1]").arg(database) << error.logText();
        return Outcome::failure(error.detailedText());
    }
}

} // namespace

SchemaMigrator::SchemaMigrator(Database &database) : SchemaMigrator(database, database.catalog()) {}

SchemaMigrator::SchemaMigrator(Database &database, const SqlCatalog &catalog)
    : m_database(database), m_catalog(catalog)
{
}

bool SchemaMigrator::hasTables()
{
    SqlQuery query = m_database.query("count_tables");
    query.exec().next();
    return query.int64("tables") > 0;
}

int SchemaMigrator::installedVersion()
{
    {
        SqlQuery ours = m_database.query("has_version_table");
        ours.exec().next();
        if (ours.int64("tables") == 0)
            return 0;
    }
    SqlQuery query = m_database.query("select_schema_version");
    query.exec().next();
    return query.number("version");
}

bool SchemaMigrator::isUnfinishedCopy()
{
    SqlQuery query = m_database.query("select_unfinished_copy");
    query.exec().next();
    return query.number("marks") > 0;
}

void SchemaMigrator::runStep(const QStringList &statements, int version)
{
    Transaction transaction(m_database);
    const QString identity = m_database.dialect().identityColumn();
    for (QString statement : statements)
        m_database.run(statement.replace(QLatin1String("@identity@"), identity));
    m_database.query("insert_schema_version")
        .bind(":version", version)
        .bind(":applied_time", storedNow())
        .exec();
    transaction.commit();
}

Outcome SchemaMigrator::install()
{
    return guarded("install schema", m_database.displayText(), [this] { return installChecked(); });
}

Outcome SchemaMigrator::installChecked()
{
    if (hasTables())
        return Outcome::failure(
            tr("数据库不是空的，不能在其中新建：%1").arg(m_database.displayText()));
    runStep(m_catalog.installStatements(), knownVersion());
    return Outcome::success();
}

Outcome SchemaMigrator::upgrade()
{
    return guarded("upgrade schema", m_database.displayText(), [this] { return upgradeChecked(); });
}

Outcome SchemaMigrator::upgradeChecked()
{
    const int installed = installedVersion();
    if (installed == 0)
        return Outcome::failure(
            hasTables()
                ? tr("不是本系统的数据库：%1").arg(m_database.displayText())
                : tr("数据库 %1 是空的：请先运行 kodms-admin init").arg(m_database.displayText()));
    if (installed > knownVersion())
        return Outcome::failure(tr("数据库版本 %1 比本程序所知的版本 %2 新，请升级本程序：%3")
                                    .arg(installed)
                                    .arg(knownVersion())
                                    .arg(m_database.displayText()));
    if (isUnfinishedCopy())
        return Outcome::failure(
            tr("复制到 %1 的工作没有完成，还不能使用：请再运行一次 kodms-admin copy")
                .arg(m_database.displayText()));
    for (int version = installed + 1; version <= knownVersion(); ++version)
        runStep(m_catalog.upgradeStatements(version), version);
    return Outcome::success();
}

} // namespace KODMS::Services
