// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/FileCopy.h"

#include "services/records/Database.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>

#include <utility>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationCopy", text);
}

/// Passes on the wish to cancel and counts nothing: a file is read and written several times.
class Silent final : public Progress {
public:
    explicit Silent(const Progress &shown) : m_shown(shown) {}

    void setTotal(qint64) override {}

    void advance(qint64) override {}

    bool isCancelled() const override { return m_shown.isCancelled(); }

private:
    const Progress &m_shown;
};

Outcome failed(const QString &name, const Outcome &why)
{
    return Outcome::failure(tr("文件 %1 没有复制：%2").arg(name, why.text), why.cause);
}

} // namespace

FileCopy::FileCopy(FileStore &from, FileStore &to, QString passing)
    : m_from(from), m_to(to), m_passing(std::move(passing))
{
}

/// Also those that are on their way out: the target's next start goes on with that.
QStringList FileCopy::recordedNames(Database &records)
{
    QStringList names;
    SqlQuery query = records.query("select_recorded_files");
    query.exec();
    while (query.next()) {
        if (query.number("has_body") != 0)
            names << query.text("stored_name");
    }
    return names;
}

Outcome FileCopy::prepare(Database &records)
{
    const Outcome source = readSource(recordedNames(records));
    return source ? checkTarget() : source;
}

Outcome FileCopy::readSource(const QStringList &names)
{
    const auto files = m_from.list();
    if (!files)
        return files.outcome;
    for (const StoredFileInfo &file : files.value)
        m_source.insert(file.name, file);
    m_names = names;
    for (const QString &name : qAsConst(m_names)) {
        if (!m_source.contains(name))
            return Outcome::failure(
                tr("来源的文件库里没有记录中的文件 %1：请先运行 kodms-admin check").arg(name));
        m_bytes += m_source.value(name).size;
    }
    m_unrecorded = m_source.size() - m_names.size();
    return Outcome::success();
}

Outcome FileCopy::checkTarget()
{
    const auto files = m_to.list();
    if (!files)
        return files.outcome;
    const QSet<QString> wanted(m_names.cbegin(), m_names.cend());
    for (const StoredFileInfo &file : files.value) {
        if (!wanted.contains(file.name) || file.sha256 != m_source.value(file.name).sha256)
            return Outcome::failure(
                tr("目标的文件库 %1 不是空的（%2），不会覆盖").arg(m_to.placeText(), file.name));
    }
    return Outcome::success();
}

Outcome FileCopy::copy(Progress &progress)
{
    progress.setTotal(m_bytes);
    for (const QString &name : qAsConst(m_names)) {
        const StoredFileInfo file = m_source.value(name);
        const Outcome outcome = copyOne(file, progress);
        if (!outcome)
            return failed(name, outcome);
        progress.advance(file.size);
    }
    return Outcome::success();
}

Outcome FileCopy::copyOne(const StoredFileInfo &file, Progress &progress)
{
    Silent silent(progress);
    if (silent.isCancelled())
        return Outcome::failure(tr("已取消"));
    if (!m_to.exists(file.name)) {
        const QString path = m_passing + QStringLiteral("/file");
        Outcome moved = m_from.get(file.name, path, silent);
        if (moved)
            moved = m_to.put(path, file.name, silent);
        QFile::remove(path);
        if (!moved)
            return moved;
    }
    const Outcome read = m_to.verify(file.name, silent);
    if (!read)
        return read;
    const auto arrived = m_to.find(file.name);
    if (!arrived)
        return arrived.outcome;
    return arrived.value.sha256 == file.sha256 && arrived.value.size == file.size
               ? Outcome::success()
               : Outcome::failure(tr("目标上的内容与来源不同"));
}

} // namespace KODMS::Services
