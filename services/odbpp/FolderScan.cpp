// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/FolderScan.h"

#include "services/archive/ArchiveWalk.h"
#include "services/disk/Disk.h"
#include "services/disk/FileHandle.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace KODMS::Services {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 18;
constexpr int MaxDepth = 128;

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

} // namespace

FolderScan::FolderScan(const LimitSettings &limits, Progress &progress)
    : m_limits(limits), m_progress(progress), m_buffer(PieceSize)
{
}

Outcome FolderScan::run(const QString &folder, JobScan &scan)
{
    const QString name = QFileInfo(folder).fileName();
    const QString prefix = name.isEmpty() ? name : name + QLatin1Char('/');
    if (Outcome found = collect(fsPath(folder), prefix, 0); !found)
        return found;
    m_progress.setTotal(m_wantedBytes);
    for (const Member &member : m_members)
        if (Outcome done = read(member, scan); !done)
            return done;
    return Outcome::success();
}

Outcome FolderScan::collect(const fs::path &folder, const QString &prefix, int depth)
{
    std::error_code error;
    std::vector<fs::path> children = Disk::children(folder, error);
    if (error)
        return ioFailure("list", fromFsPath(folder), error.value());
    std::sort(children.begin(), children.end());
    for (const fs::path &child : children) {
        if (m_progress.isCancelled())
            return cancelledFailure();
        const QString name = prefix + fromFsPath(child.filename());
        if (Outcome added = add(child, name, depth); !added)
            return added;
    }
    return Outcome::success();
}

Outcome FolderScan::add(const fs::path &path, const QString &name, int depth)
{
    if (++m_entries > m_limits.archiveEntries || depth > MaxDepth)
        return tooManyEntries(name, m_limits.archiveEntries);
    std::error_code error;
    const Disk::FileType type = Disk::typeOf(path, error);
    if (error)
        return ioFailure("stat", fromFsPath(path), error.value());
    if (type == Disk::FileType::directory)
        return collect(path, name + QLatin1Char('/'), depth + 1);
    if (type != Disk::FileType::regular)
        return odbRefused(name, 0,
                          {tr("是链接或特殊文件"), QStringLiteral("a link or a special file")});
    const auto size = static_cast<qint64>(Disk::fileSize(path, error));
    if (error)
        return ioFailure("stat", fromFsPath(path), error.value());
    if (JobScan::wants(name))
        m_wantedBytes += size;
    m_members.push_back({path, name, size});
    return Outcome::success();
}

Outcome FolderScan::read(const Member &member, JobScan &scan)
{
    if (Outcome begun = scan.begin(member.name); !begun)
        return begun;
    if (!JobScan::wants(member.name)) {
        scan.skip(member.size);
        return Outcome::success();
    }
    auto file = FileHandle::openForReading(fromFsPath(member.path));
    if (!file)
        return file.outcome;
    for (;;) {
        if (m_progress.isCancelled())
            return cancelledFailure();
        const auto got = file.value.read(m_buffer.data(), static_cast<qint64>(m_buffer.size()));
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        scan.data(m_buffer.data(), got.value);
        m_progress.advance(got.value);
    }
    scan.end();
    return Outcome::success();
}

} // namespace KODMS::Services
