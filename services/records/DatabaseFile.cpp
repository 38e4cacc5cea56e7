// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/DatabaseFile.h"

#include "services/disk/FsPath.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/SchemaMigrator.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

/// The first schema whose questions have pictures.
constexpr int PicturesVersion = 2;

QString tr(const char *text)
{
    return QCoreApplication::translate("DatabaseFile", text);
}

Outcome checkWhole(Database &database, const QString &path)
{
    SqlQuery problems = database.query("check_database");
    if (!problems.exec().next())
        return Outcome::success();
    return Outcome::failure(tr("数据库已损坏：%1").arg(path),
                            QStringLiteral("%1: %2").arg(path, problems.text("problem")));
}

DatabaseContents contentsOf(Database &database)
{
    DatabaseContents contents;
    contents.schemaVersion = SchemaMigrator(database).installedVersion();
    SqlQuery flows = database.query("count_flows");
    flows.exec().next();
    contents.flows = flows.int64("total");
    SqlQuery files = contents.schemaVersion < PicturesVersion
                         ? database.query("select_original_files")
                         : database.query("select_recorded_files");
    files.exec();
    while (files.next())
        if (files.number("has_body") != 0)
            contents.storedNames << files.text("stored_name");
    return contents;
}

} // namespace

Result<DatabaseContents> inspectDatabaseFile(const DatabaseSettings &settings, const QString &path)
{
    DatabaseSettings own = settings.patient();
    own.path = path;
    try {
        Database database(own);
        const SchemaMigrator migrator(database);
        if (Outcome whole = checkWhole(database, path); !whole)
            return whole;
        DatabaseContents contents = contentsOf(database);
        if (contents.schemaVersion == 0 || contents.schemaVersion > migrator.knownVersion())
            return Outcome::failure(
                tr("数据库的结构版本 %1 不受支持").arg(contents.schemaVersion),
                QStringLiteral("%1: schema version %2").arg(path).arg(contents.schemaVersion));
        return contents;
    } catch (const SqlError &error) {
        return Outcome::failure(error.userText(), error.logText());
    }
}

QString databasePlace(const DatabaseSettings &settings)
{
    return Dialect::create(settings)->placeText(settings);
}

bool chooseOneDatabase(const DatabaseSettings &a, const DatabaseSettings &b)
{
    if (databasePlace(a) == databasePlace(b))
        return true;
    if (Dialect::create(a)->isServer() || Dialect::create(b)->isServer())
        return false;
    std::error_code error; // where one of them is not there, they are two
    return std::filesystem::equivalent(fsPath(a.path), fsPath(b.path), error);
}

QString databaseEngine(const DatabaseSettings &settings)
{
    return Dialect::create(settings)->sqlFolder();
}

} // namespace KODMS::Services
