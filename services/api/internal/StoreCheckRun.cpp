// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/StoreCheckRun.h"

#include "services/disk/IoFailure.h"
#include "services/filestore/StoreFailures.h"
#include "services/notices/NoticeHub.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/StoredFileRecords.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("StoreCheck", text);
}

} // namespace

StoreCheckRun::StoreCheckRun(const Configuration &configuration, FileStore &store,
                             const CheckOptions &options, int userId)
    : m_configuration(configuration), m_store(store), m_options(options), m_userId(userId),
      m_database(configuration.database.patient())
{
}

Result<CheckReport> StoreCheckRun::run(Progress &progress)
{
    lookAtConfiguration();
    lookAtDatabase();
    lookAtMarks();
    readRecords();
    if (Outcome read = readStore(); !read)
        return read;
    if (Outcome compared = compare(); !compared)
        return compared;
    if (m_options.readContents) {
        if (Outcome read = readContents(progress); !read)
            return read;
    }
    if (Outcome looked = lookAtLeftovers(); !looked)
        return looked;
    return m_report;
}

CheckFinding &StoreCheckRun::add(const char *kind, const QString &name, const QString &text,
                                 bool isProblem)
{
    m_report.findings.append({QString::fromLatin1(kind), name, text, isProblem, false});
    return m_report.findings.last();
}

void StoreCheckRun::lookAtConfiguration()
{
    for (const QString &notice : m_configuration.notices)
        add("configuration", m_configuration.filePath, notice, false);
}

void StoreCheckRun::lookAtDatabase()
{
    SqlQuery problems = m_database.query("check_database");
    problems.exec();
    while (problems.next())
        add("database", m_database.displayText(), tr("数据库：%1").arg(problems.text("problem")),
            true);
}

void StoreCheckRun::lookAtMarks()
{
    SqlQuery query = m_database.query("select_delete_marks");
    query.exec();
    while (query.next())
        m_marks.insert(query.text("stored_name"), query.number("final") != 0);
    for (auto mark = m_marks.cbegin(); mark != m_marks.cend(); ++mark) {
        const QString text = mark.value() ? tr("记录已删除，文件有待删除：%1").arg(mark.key())
                                          : tr("文件带有删除标记，但未删除：%1").arg(mark.key());
        CheckFinding &finding = add("delete-mark", mark.key(), text, false);
        if (!m_options.repair)
            continue;
        // A name that is recorded again is no leftover.
        const bool removesBody = mark.value() && !isRecorded(mark.key());
        const Outcome done = removesBody ? m_store.removeIfThere(mark.key()) : Outcome::success();
        finding.isRepaired = repaired(mark.key(), "delete mark removed", done);
        if (finding.isRepaired)
            forgetMark(mark.key());
    }
}

void StoreCheckRun::forgetMark(const QString &name)
{
    m_database.query("delete_delete_mark").bind(":name", name).exec();
}

void StoreCheckRun::readRecords()
{
    SqlQuery query = m_database.query("select_recorded_files");
    query.exec();
    while (query.next())
        m_records.insert(query.text("stored_name"), query.number("has_body") != 0);
    m_report.sampleRecords = std::count(m_records.cbegin(), m_records.cend(), false);
    m_report.records = m_records.size() - m_report.sampleRecords;
}

Outcome StoreCheckRun::readStore()
{
    auto files = m_store.list();
    if (!files)
        return files.outcome;
    m_files = std::move(files.value);
    m_report.files = m_files.size();
    for (const StoredFileInfo &file : qAsConst(m_files))
        m_report.bytes += file.size;
    return Outcome::success();
}

Outcome StoreCheckRun::compare()
{
    QSet<QString> stored;
    for (const StoredFileInfo &file : qAsConst(m_files)) {
        stored.insert(file.name);
        if (m_records.contains(file.name))
            continue;
        if (Outcome looked = unrecorded(file.name); !looked)
            return looked;
    }
    QStringList absent;
    for (auto record = m_records.cbegin(); record != m_records.cend(); ++record)
        if (record.value() && !stored.contains(record.key()))
            absent << record.key();
    absent.sort();
    for (const QString &name : qAsConst(absent))
        if (Outcome looked = missing(name); !looked)
            return looked;
    return Outcome::success();
}

bool StoreCheckRun::isRecorded(const QString &name)
{
    return StoredFileRecords(m_database).isRecorded(name);
}

/// The record may have gone since it was read, and its file with it.
Outcome StoreCheckRun::missing(const QString &name)
{
    const auto isThere = m_store.has(name);
    if (!isThere)
        return isThere.outcome;
    if (!isThere.value && isRecorded(name))
        add("missing-file", name, missingFailure(name).text, true);
    return Outcome::success();
}

Outcome StoreCheckRun::unrecorded(const QString &name)
{
    if (m_marks.value(name, false) || isRecorded(name))
        return Outcome::success();
    const auto isThere = m_store.has(name);
    if (!isThere || !isThere.value)
        return isThere.outcome;
    if (m_store.isPutterAlive(name)) {
        add("unrecorded-file", name, tr("文件尚无记录，可能正在登记：%1").arg(name), false);
        return Outcome::success();
    }
    CheckFinding &finding =
        add("unrecorded-file", name, tr("没有记录指向此文件：%1").arg(name), false);
    if (m_options.repair)
        finding.isRepaired = repaired(name, "unrecorded file removed", m_store.remove(name));
    return Outcome::success();
}

Outcome StoreCheckRun::readContents(Progress &progress)
{
    progress.setTotal(m_report.bytes);
    for (const StoredFileInfo &file : qAsConst(m_files)) {
        const Outcome verified = m_store.verify(file.name, progress);
        if (progress.isCancelled())
            return cancelledFailure();
        if (verified) {
            ++m_report.filesRead;
            continue;
        }
        const auto isThere = m_store.has(file.name);
        if (!isThere)
            return isThere.outcome;
        if (isThere.value)
            add("damaged-file", file.name, verified.text, true);
    }
    return Outcome::success();
}

Outcome StoreCheckRun::lookAtLeftovers()
{
    const auto before = m_store.leftovers();
    if (!before)
        return before.outcome;
    QSet<QString> left(before.value.cbegin(), before.value.cend());
    if (m_options.repair && !left.isEmpty()) {
        const Outcome swept = m_store.sweep();
        const auto after = m_store.leftovers();
        if (!swept || !after)
            return swept ? after.outcome : swept;
        left = QSet<QString>(after.value.cbegin(), after.value.cend());
    }
    for (const QString &path : before.value) {
        CheckFinding &finding = add("leftover", path, tr("文件库中的残留：%1").arg(path), false);
        finding.isRepaired = m_options.repair && !left.contains(path);
    }
    return Outcome::success();
}

bool StoreCheckRun::repaired(const QString &name, const char *what, const Outcome &done)
{
    if (!done) {
        reportFailure(lcFileStore(), "check --repair", name, done.cause, done.text);
        return false;
    }
    writeAudit(m_database, {m_userId, QStringLiteral("store.repair"), QStringLiteral("file"), 0,
                            name, QString(), QString::fromLatin1(what), false});
    return true;
}

} // namespace KODMS::Services
