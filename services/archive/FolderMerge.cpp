// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderMerge.h"

#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QUuid>

#include <cerrno>

namespace KODMS::Services {

namespace fs = std::filesystem;

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
    const auto standing = fs::status(m_into, error);
    if (fs::exists(standing) && !fs::is_directory(standing))
        return ioFailure("unpack into", fromFsPath(m_into), ENOTDIR);
    if (Outcome planned = plan(fs::path()); !planned)
        return planned;
    Outcome moved = moveAll(progress);
    if (!moved)
        undo();
    fs::remove_all(m_aside, error);
    return moved;
}

/// For a folder that is on both sides, or the whole.
Outcome FolderMerge::plan(const fs::path &relative)
{
    std::error_code error;
    for (const auto &child : fs::directory_iterator(m_from / relative, error))
        if (Outcome planned = planChild(child, relative / child.path().filename()); !planned)
            return planned;
    return error ? ioFailure("list", fromFsPath(m_from / relative), error.value())
                 : Outcome::success();
}

Outcome FolderMerge::planChild(const fs::directory_entry &child, const fs::path &relative)
{
    std::error_code error;
    const fs::path target = m_into / relative;
    const auto standing = fs::symlink_status(target, error);
    const bool isFolder = child.is_directory(error);
    if (isFolder && fs::is_directory(standing))
        return plan(relative);
    if (isFolder && fs::exists(standing))
        return ioFailure("unpack into", fromFsPath(target), ENOTDIR);
    if (fs::is_directory(standing))
        return ioFailure("replace", fromFsPath(target), EISDIR);
    m_moves.push_back({child.path(), target});
    return Outcome::success();
}

Outcome FolderMerge::moveAll(const Progress &progress)
{
    std::error_code error;
    m_hasMadeTarget = fs::create_directories(m_into, error);
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
    if (fs::exists(fs::symlink_status(move.to, error))) {
        const fs::path aside = m_aside / std::to_string(m_done.size());
        fs::create_directories(m_aside, error);
        fs::rename(move.to, aside, error);
        if (error)
            return ioFailure("replace", fromFsPath(move.to), error.value());
        m_done.push_back({move.to, aside});
    }
    fs::rename(move.from, move.to, error);
    if (error)
        return ioFailure("move", fromFsPath(move.to), error.value());
    m_done.push_back(move);
    return Outcome::success();
}

void FolderMerge::undo()
{
    std::error_code ignored;
    for (auto move = m_done.rbegin(); move != m_done.rend(); ++move)
        fs::rename(move->to, move->from, ignored);
    if (m_hasMadeTarget)
        fs::remove(m_into, ignored);
}

} // namespace KODMS::Services
