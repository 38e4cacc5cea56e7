// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderMerge.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QUuid>

#include <cerrno>

namespace KODMS::Services {

namespace fs = std::filesystem;
using Disk::FileType;

FolderMerge::FolderMerge(const QString &from, const QString &into)
    : m_from(fsPath(from)), m_into(fsPath(into)),
      m_aside(fsPath(from + QStringLiteral("-aside-") + QUuid::createUuid().toString(QUuid::Id128)))
{
}

Outcome FolderMerge::run(const Progress &progress)
{
    std::error_code error;
    // The target folder itself may be reached through a link: that is its owner's
    // choice. Below it, a link could lead anywhere.
    const FileType standing = Disk::typeBehindLinks(m_into, error);
    if (Disk::isThere(standing) && standing != FileType::directory)
        return ioFailure("unpack into", fromFsPath(m_into), ENOTDIR);
    if (Outcome planned = plan(fs::path()); !planned)
        return planned;
    Outcome moved = moveAll(progress);
    if (!moved)
        undo();
    Disk::removeAll(m_aside, error);
    return moved;
}

/// For a folder that is on both sides, or the whole.
Outcome FolderMerge::plan(const fs::path &relative)
{
    std::error_code error;
    for (const fs::path &child : Disk::children(m_from / relative, error))
        if (Outcome planned = planChild(child, relative / child.filename()); !planned)
            return planned;
    return error ? ioFailure("list", fromFsPath(m_from / relative), error.value())
                 : Outcome::success();
}

Outcome FolderMerge::planChild(const fs::path &child, const fs::path &relative)
{
    std::error_code error;
    const fs::path target = m_into / relative;
    const FileType standing = Disk::typeOf(target, error);
    const bool isFolder = Disk::typeBehindLinks(child, error) == FileType::directory;
    if (isFolder && standing == FileType::directory)
        return plan(relative);
    if (isFolder && Disk::isThere(standing))
        return ioFailure("unpack into", fromFsPath(target), ENOTDIR);
    if (standing == FileType::directory)
        return ioFailure("replace", fromFsPath(target), EISDIR);
    m_moves.push_back({child, target});
    return Outcome::success();
}

Outcome FolderMerge::moveAll(const Progress &progress)
{
    std::error_code error;
    m_hasMadeTarget = Disk::createFolders(m_into, error);
    if (error)
        return ioFailure("create folder", fromFsPath(m_into), error.value());
    for (const Move &move : m_moves) {
        if (progress.isCancelled())
            return cancelledFailure();
        if (Outcome moved = moveOne(move); !moved)
            return moved;
    }
    return Outcome::success();
}

Outcome FolderMerge::moveOne(const Move &move)
{
    std::error_code error;
    if (Disk::isThere(Disk::typeOf(move.to, error))) {
        const fs::path aside = m_aside / std::to_string(m_done.size());
        Disk::createFolders(m_aside, error);
        Disk::rename(move.to, aside, error);
        if (error)
            return ioFailure("replace", fromFsPath(move.to), error.value());
        m_done.push_back({move.to, aside});
    }
    Disk::rename(move.from, move.to, error);
    if (error)
        return ioFailure("move", fromFsPath(move.to), error.value());
    m_done.push_back(move);
    return Outcome::success();
}

void FolderMerge::undo()
{
    std::error_code ignored;
    for (auto move = m_done.rbegin(); move != m_done.rend(); ++move)
        Disk::rename(move->to, move->from, ignored);
    if (m_hasMadeTarget)
        Disk::remove(m_into, ignored);
}

} // namespace KODMS::Services
