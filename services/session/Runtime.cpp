// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/Runtime.h"

#include "services/notices/NoticeHub.h"
#include "services/records/DatabaseFile.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/Transaction.h"
#include "services/session/SessionSignals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace KODMS::Services {

namespace {

std::shared_ptr<Runtime> running;

QString tr(const char *text)
{
    return QCoreApplication::translate("Runtime", text);
}

Outcome notInitialised(const Configuration &configuration)
{
    return Outcome::failure(tr("尚未初始化（没有数据库 %1）：请先运行 kodms-admin init")
                                .arg(databasePlace(configuration.database)));
}

bool isMissing(const DatabaseSettings &settings)
{
    return !settings.path.isEmpty() && !QFileInfo::exists(settings.path);
}

Result<std::unique_ptr<Database>> openDatabase(const Configuration &configuration)
{
    if (isMissing(configuration.database))
        return notInitialised(configuration);
    try {
        return std::make_unique<Database>(configuration.database);
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "open database" << error.logText();
        if (error.kind() == SqlError::Kind::Missing)
            return notInitialised(configuration);
        return Outcome::failure(
            tr("无法打开数据库 %1：%2")
                .arg(databasePlace(configuration.database), error.detailedText()));
    }
}

} // namespace

Runtime::Runtime(Configuration configuration, std::unique_ptr<Database> database,
                 std::unique_ptr<FileStore> fileStore, int schemaVersion)
    : m_configuration(std::move(configuration)), m_fileStore(std::move(fileStore)),
      m_storedFiles(*m_fileStore), m_records(std::move(database)),
      m_foreignChanges(m_records.database()), m_searchIndex(m_configuration.database),
      m_schemaVersion(schemaVersion)
{
    m_records.setStoredFiles(&m_storedFiles);
    m_records.setShownRecords(&m_memory);
    m_records.setViewIndex(&m_searchIndex);
}

Runtime::~Runtime() = default;

Result<std::shared_ptr<Runtime>> Runtime::open(const QString &iniPath, const OpenStore &openStore)
{
    auto configuration = Configuration::load(iniPath);
    if (!configuration)
        return configuration.outcome;
    auto database = openDatabase(configuration.value);
    if (!database)
        return database.outcome;
    SchemaMigrator migrator(*database.value);
    const Outcome upgraded = migrator.upgrade();
    if (!upgraded)
        return upgraded;
    auto store = openStore(configuration.value.fileStore);
    if (!store)
        return store.outcome;
    const std::shared_ptr<Runtime> runtime(
        new Runtime(std::move(configuration.value), std::move(database.value),
                    std::move(store.value), migrator.knownVersion()));
    runtime->makeFolders();
    const Outcome settled = runtime->settleDeleteMarks();
    if (!settled)
        return settled;
    runtime->beginForeignChangeLogAnew();
    runtime->trimChangeLog();
    return runtime;
}

Runtime *Runtime::current()
{
    return running.get();
}

void Runtime::setCurrent(const std::shared_ptr<Runtime> &runtime)
{
    RecordContext::setCurrent(runtime ? &runtime->records() : nullptr);
    running = runtime;
    Q_EMIT SessionSignals::instance().actorChanged();
}

void Runtime::setActor(const Actor &actor)
{
    m_memory.clear();
    m_records.setActor(actor);
    Q_EMIT SessionSignals::instance().actorChanged();
}

/// A mark that no deletion followed is forgotten; a deletion whose stored file
/// stayed behind, because the program ended in between, is brought to its end.
/// Without marks nothing is written: a start never waits for another writer.
Outcome Runtime::settleDeleteMarks()
{
    try {
        const QStringList marked = deleteMarks();
        if (marked.isEmpty())
            return Outcome::success();
        const QStringList settled = removeMarkedBodies();
        Database &database = m_records.database();
        Transaction transaction(database);
        for (const QString &name : settled)
            database.query("delete_delete_mark").bind(":name", name).exec();
        database.query("delete_stale_delete_marks").exec();
        transaction.commit();
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "settle delete marks" << error.logText();
        return Outcome::failure(error.userText());
    }
    return Outcome::success();
}

bool Runtime::isChangeLogForeign()
{
    SqlQuery look = m_records.database().query("select_change_log_is_foreign");
    return look.exec().next() && look.number("is_foreign") != 0;
}

/// Of a log that was restored from another server, nobody knows what is new. Whoever follows
/// it reads everything again. A start does not fail for it: the next one does the same.
void Runtime::beginForeignChangeLogAnew()
{
    constexpr int everything = 0;
    try {
        if (!isChangeLogForeign())
            return;
        Database &database = m_records.database();
        Transaction transaction(database);
        if (!isChangeLogForeign()) // another desk was faster
            return;
        database.query("delete_all_changes").exec();
        database.query("insert_change")
            .bind(":kind", everything)
            .bind(":row_id", 0)
            .bind(":op", 2)
            .exec();
        transaction.commit();
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "begin change log anew" << error.logText();
    }
}

/// Whoever follows the log and finds the next entry gone reads everything again. A start
/// neither fails nor waits for it: the next one does the same.
void Runtime::trimChangeLog()
{
    constexpr qint64 kept = 100'000;
    try {
        Database &database = m_records.database();
        SqlQuery span = database.query("select_change_log_span");
        span.exec().next();
        const qint64 last = span.int64("newest") - kept;
        if (last - span.int64("oldest") >= kept)
            database.query("delete_old_changes").bind(":seq", last).exec();
    } catch (const SqlError &error) {
        qCInfo(lcRecords).noquote() << "trim change log" << error.logText();
    }
}

QStringList Runtime::deleteMarks()
{
    QStringList names;
    SqlQuery marks = m_records.database().query("select_delete_marks");
    marks.exec();
    while (marks.next())
        names << marks.text("stored_name");
    return names;
}

/// The names whose stored file is gone now.
QStringList Runtime::removeMarkedBodies()
{
    QStringList names;
    QStringList settled;
    SqlQuery marks = m_records.database().query("select_final_delete_marks");
    marks.exec();
    while (marks.next())
        names << marks.text("stored_name");
    for (const QString &name : qAsConst(names)) {
        const Outcome removed = m_storedFiles.removeBody(name);
        if (removed)
            settled << name;
        else
            qCWarning(lcFileStore).noquote() << "settle delete marks" << name << removed.cause;
    }
    return settled;
}

/// The desks copy into these folders and never make them.
void Runtime::makeFolders() const
{
    for (const QString &folder : {m_configuration.paths.staging, m_configuration.paths.download}) {
        if (!QDir().mkpath(folder))
            reportFailure(lcConfig(), "make folder", folder, QStringLiteral("cannot be made"),
                          tr("无法创建文件夹 %1").arg(folder));
    }
}

} // namespace KODMS::Services
