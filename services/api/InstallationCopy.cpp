// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/InstallationCopy.h"

#include "services/api/internal/CopySide.h"
#include "services/api/internal/FileCopy.h"
#include "services/config/Configuration.h"
#include "services/filestore/FileStore.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/DatabaseFile.h"
#include "services/records/Transaction.h"
#include "services/records/copy/RecordsCopy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationCopy", text);
}

bool haveSamePlace(const Configuration &from, const Configuration &to)
{
    const FileStoreSettings &a = from.fileStore;
    const FileStoreSettings &b = to.fileStore;
    return chooseOneDatabase(from.database, to.database) ||
           (a.kind == b.kind && a.root == b.root && a.uri == b.uri && a.database == b.database &&
            a.bucket == b.bucket);
}

Outcome makeFolders(const Configuration &target)
{
    QStringList folders{target.paths.staging, target.paths.download};
    if (!target.database.path.isEmpty())
        folders << QFileInfo(target.database.path).absolutePath();
    if (!target.fileStore.root.isEmpty())
        folders << target.fileStore.root;
    for (const QString &folder : qAsConst(folders)) {
        if (!folder.isEmpty() && !QDir().mkpath(folder))
            return Outcome::failure(tr("无法创建文件夹 %1").arg(folder));
    }
    return Outcome::success();
}

Result<CopySummary> copyBetween(const Configuration &from, const Configuration &to,
                                Progress &progress)
{
    auto source = FileStore::create(from.fileStore);
    if (!source)
        return CopySide::source(source.outcome);
    auto target = FileStore::create(to.fileStore);
    if (!target)
        return CopySide::target(target.outcome);
    const QTemporaryDir passing(to.paths.staging + QStringLiteral("/copy-XXXXXX"));
    if (!passing.isValid())
        return Outcome::failure(tr("无法创建文件夹 %1").arg(to.paths.staging) +
                                QStringLiteral("/copy-..."));
    Database fromRecords(from.database.patient());
    FileCopy files(*source.value, *target.value, passing.path());
    Outcome outcome = RecordsCopy::checkSource(fromRecords);
    if (outcome)
        outcome = files.begin(fromRecords);
    if (!outcome)
        return outcome;
    // Only now: a target whose files have no place gets no database either.
    Database toRecords(to.database.patient(), Database::Open::Create);
    RecordsCopy records(fromRecords, toRecords);
    outcome = records.prepareTarget();
    if (!outcome)
        return outcome;
    const Transaction oneMoment(fromRecords, Transaction::Purpose::Read);
    outcome = files.prepare(fromRecords, records.goesOn());
    if (!outcome)
        return outcome;
    records.mark();
    outcome = files.copy(progress);
    if (!outcome)
        return outcome;
    progress.setUnit(Progress::Unit::Rows);
    progress.setTotal(records.sourceRows());
    const auto tables = records.copy(progress);
    if (!tables)
        return tables.outcome;
    CopySummary summary{{}, files.files(), files.bytes(), files.unrecorded()};
    for (const CopiedRows &rows : tables.value)
        summary.tables << CopiedTableProof{rows.table, rows.rows, rows.sha256};
    return summary;
}

} // namespace

Result<CopySummary> InstallationCopy::copy(const QString &fromIni, const QString &toIni,
                                           Progress &progress)
{
    const auto from = Configuration::load(fromIni);
    if (!from)
        return from.outcome;
    const auto to = Configuration::load(toIni);
    if (!to)
        return to.outcome;
    if (haveSamePlace(from.value, to.value))
        return Outcome::failure(tr("来源和目标用的是同一个数据库或同一个文件库"));
    const Outcome folders = makeFolders(to.value);
    if (!folders)
        return folders;
    try {
        return copyBetween(from.value, to.value, progress);
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "copy installation" << error.logText();
        return Outcome::failure(tr("复制没有完成：%1").arg(error.detailedText()), error.logText());
    }
}

} // namespace KODMS::Services
