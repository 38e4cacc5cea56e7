// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/FileCopy.h"

#include "services/api/internal/CopySide.h"
#include "services/disk/FileHandle.h"
#include "services/records/Database.h"
#include "services/records/Guid.h"

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

/// Of no stored file: they bear the numbers of jobs and GUIDs.
const QString probePrefix = QStringLiteral("kodms-copy-probe-");

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

Outcome FileCopy::begin(Database &records)
{
    const Outcome another = refuseOneStore(!recordedNames(records).isEmpty());
    if (!another)
        return another;
    auto hold = m_from.hold();
    m_hold = std::move(hold.value);
    return CopySide::source(hold.outcome);
}

/// Also shows that the target can be written.
Outcome FileCopy::refuseOneStore(bool hasFiles)
{
    const QString name = probePrefix + newGuid();
    const QString path = m_passing + QStringLiteral("/probe");
    NoProgress silent;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("probe") < 0 || !file.flush())
        return Outcome::failure(tr("无法写入 %1：%2").arg(path, file.errorString()));
    const Outcome put = m_to.put(path, name, silent);
    file.remove();
    if (!put)
        return CopySide::target(put);
    const auto isThere = m_from.has(name);
    if (const Outcome removed = m_to.removeIfThere(name); !removed)
        return CopySide::target(removed);
    if (isThere.value)
        return Outcome::failure(tr("来源和目标用的是同一个文件库：%1").arg(m_to.placeText()));
    // A source without a single file need not be there yet.
    return hasFiles ? CopySide::source(isThere.outcome) : Outcome::success();
}

Outcome FileCopy::prepare(Database &records, bool goesOn)
{
    const Outcome source = readSource(recordedNames(records));
    return source ? checkTarget(goesOn) : source;
}

Outcome FileCopy::readSource(const QStringList &names)
{
    const auto files = m_from.list();
    if (!files)
        return CopySide::source(files.outcome);
    for (const StoredFileInfo &file : files.value)
        m_source.insert(file.name, file);
    m_names = names;
    m_unrecorded = m_source.size();
    for (const QString &name : qAsConst(m_names)) {
        if (m_source.contains(name))
            --m_unrecorded;
        const auto file = sourceFile(name);
        if (!file)
            return file.outcome;
        m_source.insert(name, file.value);
        m_bytes += file.value.size;
    }
    return Outcome::success();
}

/// What the list lacks may have been removed since the records were read, and then it is held;
/// of a file that another program put the list does not know the sum.
Result<StoredFileInfo> FileCopy::sourceFile(const QString &name) const
{
    const StoredFileInfo listed = m_source.value(name);
    if (!listed.sha256.isEmpty())
        return listed;
    auto held = m_hold->find(name);
    if (held)
        return held;
    const auto isThere = m_from.has(name);
    if (!isThere)
        return CopySide::source(isThere.outcome);
    return isThere.value ? failed(name, CopySide::source(held.outcome))
                         : Outcome::failure(tr("来源的文件库里没有记录中的文件 %1：请先运行 "
                                               "kodms-admin check")
                                                .arg(name));
}

Outcome FileCopy::checkTarget(bool goesOn)
{
    const auto files = m_to.list();
    if (!files)
        return CopySide::target(files.outcome);
    const QSet<QString> wanted(m_names.cbegin(), m_names.cend());
    for (const StoredFileInfo &file : files.value) {
        if (file.name.startsWith(probePrefix)) { // of a copy that was killed
            if (Outcome removed = m_to.removeIfThere(file.name); !removed)
                return CopySide::target(removed);
            continue;
        }
        const bool hasArrived =
            goesOn && wanted.contains(file.name) && file.sha256 == m_source.value(file.name).sha256;
        if (!hasArrived)
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
    const auto isThere = m_to.has(file.name);
    Outcome done = CopySide::target(isThere.outcome);
    if (done && !isThere.value)
        done = passOn(file.name, silent);
    if (done)
        done = CopySide::target(m_to.verify(file.name, silent));
    if (!done)
        return done;
    const auto arrived = m_to.find(file.name);
    if (!arrived)
        return CopySide::target(arrived.outcome);
    return arrived.value.sha256 == file.sha256 && arrived.value.size == file.size
               ? Outcome::success()
               : Outcome::failure(tr("目标上的内容与来源不同"));
}

Outcome FileCopy::passOn(const QString &name, Progress &progress)
{
    const QString path = m_passing + QStringLiteral("/file");
    Outcome moved = fetch(name, path, progress);
    if (moved)
        moved = CopySide::target(m_to.put(path, name, progress));
    QFile::remove(path);
    return moved;
}

Outcome FileCopy::fetch(const QString &name, const QString &path, Progress &progress) const
{
    auto local = FileHandle::createNew(path);
    if (!local)
        return local.outcome;
    Outcome written;
    const auto sink = [&](const char *data, qint64 size) {
        written = local.value.write(data, size);
        return written;
    };
    const Outcome read = m_hold->read(name, sink, progress);
    if (!written)
        return written;
    return read ? local.value.close() : CopySide::source(read);
}

} // namespace KODMS::Services
