// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/RecordsCopy.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Guid.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/TimeText.h"
#include "services/records/Transaction.h"
#include "services/records/copy/RowDigest.h"
#include "services/records/copy/RowInserter.h"
#include "services/records/copy/TableRows.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationCopy", text);
}

/// What the setting up of an installation leaves: the first administrator, and that they
/// were made.
bool isOfSetUp(const CopiedTable &table)
{
    const QLatin1String name(table.name);
    return name == QLatin1String("users") || name == QLatin1String("user_roles") ||
           name == QLatin1String("events") || name == QLatin1String("sign_in_failures");
}

Outcome cancelled()
{
    return Outcome::failure(tr("已取消"));
}

} // namespace

RecordsCopy::RecordsCopy(Database &from, Database &to) : m_from(from), m_to(to) {}

Outcome RecordsCopy::checkSource(Database &from)
{
    SchemaMigrator migrator(from);
    const int version = migrator.installedVersion();
    if (version == migrator.knownVersion())
        return Outcome::success();
    return Outcome::failure(
        tr("来源 %1 的数据库版本是 %2，本程序的是 %3：请先用本程序打开来源（例如 kodms-admin "
           "status）升级它，或者换用合适的程序版本")
            .arg(from.displayText())
            .arg(version)
            .arg(migrator.knownVersion()));
}

Outcome RecordsCopy::prepareTarget()
{
    SchemaMigrator migrator(m_to);
    const int version = migrator.installedVersion();
    if (version == 0)
        return installTarget();
    if (version != migrator.knownVersion())
        return Outcome::failure(tr("目标 %1 的数据库版本是 %2，本程序的是 %3：请换一个新的目标")
                                    .arg(m_to.displayText())
                                    .arg(version)
                                    .arg(migrator.knownVersion()));
    m_goesOn = migrator.isUnfinishedCopy();
    const Outcome another = refuseSource();
    return another ? refuseUsed() : another;
}

Outcome RecordsCopy::installTarget()
{
    const Outcome installed = SchemaMigrator(m_to).install();
    if (installed)
        mark(); // without people it is no installation yet
    return installed;
}

/// A server has many names. What was written there must not be found here; should this
/// program be killed meanwhile, it is the name of nobody who cannot sign in, for a day.
Outcome RecordsCopy::refuseSource()
{
    const QString probe = QStringLiteral("kodms-copy-probe-") + newGuid();
    m_to.query("count_sign_in_failure").bind(":login", probe).bind(":time", storedNow()).exec();
    bool isThere = false;
    {
        SqlQuery look = m_from.query("select_sign_in_failures");
        isThere = look.bind(":login", probe).exec().next();
    }
    m_to.query("delete_sign_in_failures").bind(":login", probe).exec();
    return isThere ? Outcome::failure(tr("来源 %1 和目标 %2 是同一个数据库")
                                          .arg(m_from.displayText(), m_to.displayText()))
                   : Outcome::success();
}

Outcome RecordsCopy::refuseUsed()
{
    bool isFresh = !hasRows("users", 1);
    for (const CopiedTable &table : CopiedTable::all())
        isFresh = isFresh && (isOfSetUp(table) || !hasRows(table.name, 0));
    return isFresh ? Outcome::success()
                   : Outcome::failure(tr("目标 %1 已有记录，不会覆盖：请用新建的、空的目标")
                                          .arg(m_to.displayText()));
}

bool RecordsCopy::hasRows(const char *table, int moreThan)
{
    SqlQuery query = m_to.prepare(
        QStringLiteral("SELECT count(*) AS found FROM (SELECT 1 FROM %1 LIMIT %2) AS first_rows")
            .arg(QLatin1String(table))
            .arg(moreThan + 1));
    query.exec().next();
    return query.number("found") > moreThan;
}

void RecordsCopy::mark()
{
    Transaction transaction(m_to);
    m_to.query("forget_unfinished_copy").exec();
    m_to.query("mark_unfinished_copy").bind(":time", storedNow()).exec();
    transaction.commit();
}

qint64 RecordsCopy::sourceRows()
{
    qint64 rows = 0;
    for (const CopiedTable &table : CopiedTable::all()) {
        SqlQuery query = m_from.prepare(QStringLiteral("SELECT count(*) AS found FROM ") +
                                        QLatin1String(table.name));
        query.exec().next();
        rows += query.int64("found");
    }
    return rows;
}

Result<QVector<CopiedRows>> RecordsCopy::copy(Progress &progress)
{
    Transaction transaction(m_to);
    clearTarget();
    dropWhatCanWait();
    QVector<CopiedRows> tables;
    for (const CopiedTable &table : CopiedTable::all()) {
        const auto rows = copyTable(table, progress);
        if (!rows)
            return rows.outcome;
        tables << rows.value;
    }
    makeWhatWaited();
    m_to.query("forget_unfinished_copy").exec();
    transaction.commit();
    countWhatArrived();
    return tables;
}

/// So that the first searches do not wait for the engine to get to know its tables. What has been
/// copied is there, whatever becomes of this.
void RecordsCopy::countWhatArrived()
{
    try {
        const QStringList statements = m_to.catalog().script(QStringLiteral("filled"));
        for (const QString &statement : statements)
            m_to.run(statement);
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "statistics of the copy" << error.logText();
    }
}

void RecordsCopy::clearTarget()
{
    for (const char *table : {"events", "user_roles", "users", "sign_in_failures"})
        m_to.run(QStringLiteral("DELETE FROM ") + QLatin1String(table));
}

/// Also the triggers that fill the log of changes: nobody follows what is not there yet.
void RecordsCopy::dropWhatCanWait()
{
    const QStringList statements = m_to.catalog().deferrableStatements();
    for (const QString &statement : statements)
        m_to.run(m_to.dialect().dropOf(statement));
}

void RecordsCopy::makeWhatWaited()
{
    const QStringList statements = m_to.catalog().deferrableStatements();
    for (const QString &statement : statements)
        m_to.run(statement);
    constexpr int everything = 0;
    m_to.query("insert_change").bind(":kind", everything).bind(":row_id", 0).bind(":op", 2).exec();
}

/// What arrived is read back before it counts.
Result<CopiedRows> RecordsCopy::copyTable(const CopiedTable &table, Progress &progress)
{
    constexpr int step = 2000;
    const bool isSorted = table.key == CopiedTable::Key::Other;
    const QStringList columns = TableRows::columnsOf(m_from, table);
    RowDigest sent(isSorted);
    RowInserter inserter(m_to, table, columns);
    for (TableRows rows(m_from, table, columns); rows.next();) {
        sent.add(rows.values());
        inserter.add(rows.values());
        if (sent.rows() % step != 0)
            continue;
        progress.advance(step);
        if (progress.isCancelled())
            return cancelled();
    }
    inserter.flush();
    progress.advance(sent.rows() % step);
    if (progress.isCancelled())
        return cancelled();
    if (table.key == CopiedTable::Key::Counted)
        copyCounter(table);
    RowDigest arrived(isSorted);
    for (TableRows rows(m_to, table, columns); rows.next();)
        arrived.add(rows.values());
    const QByteArray sum = sent.sha256();
    if (sent.rows() == arrived.rows() && sum == arrived.sha256())
        return CopiedRows{QLatin1String(table.name), sent.rows(), QString::fromLatin1(sum)};
    return Outcome::failure(tr("表 %1 在目标上与来源不同（%2 行和 %3 行），没有复制任何记录")
                                .arg(QLatin1String(table.name))
                                .arg(sent.rows())
                                .arg(arrived.rows()));
}

/// A key that was given out once stays given out, also when its row is gone.
void RecordsCopy::copyCounter(const CopiedTable &table)
{
    const QString name = QLatin1String(table.name);
    qint64 counter = 0;
    {
        SqlQuery query = m_from.query("select_counter");
        query.bind(":table", name).exec().next();
        counter = query.int64("counter");
    }
    m_to.query("clear_counter").bind(":table", name).exec();
    if (counter > 0)
        m_to.query("set_counter").bind(":table", name).bind(":counter", counter).exec();
}

} // namespace KODMS::Services
