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

Outcome FolderMerge::run()
{
    if (Outcome planned = plan(fs::path()); !planned)
        return planned;
    Outcome moved = moveAll();
    if (!moved)
        undo();
    std::error_code ignored;
    fs::remove_all(m_aside, ignored);
    return moved;
}

Outcome FolderMerge::plan(const fs::path &relative)
{
    std::error_code error;
    const fs::path target = relative.empty() ? m_into : m_into / relative;
    // The target folder itself may be reached through a link: that is its owner's
    // choice. Below it, a link could lead anywhere.
    const auto status =
        relative.empty() ? fs::status(target, error) : fs::symlink_status(target, error);
    if (status.type() == fs::file_type::not_found)
        m_newFolders.push_back(target);
    else if (status.type() != fs::file_type::directory)
        return ioFailure("unpack into", fromFsPath(target), ENOTDIR);
    for (const auto &child : fs::directory_iterator(m_from / relative, error)) {
        const fs::path path = relative / child.path().filename();
        if (Outcome planned = child.is_directory() ? plan(path) : planFile(path); !planned)
            return planned;
    }
    return error ? ioFailure("list", fromFsPath(m_from / relative), error.value())
                 : Outcome::success();
}

Outcome FolderMerge::planFile(const fs::path &relative)
{
    std::error_code error;
    const fs::path target = m_into / relative;
    if (fs::symlink_status(target, error).type() == fs::file_type::directory)
        return ioFailure("replace", fromFsPath(target), EISDIR);
    m_files.push_back({m_from / relative, target});
    return Outcome::success();
}

Outcome FolderMerge::moveAll()
{
    std::error_code error;
    for (const fs::path &folder : m_newFolders) {
        if (fs::create_directories(folder, error))
            m_madeFolders.push_back(folder);
        if (error)
            return ioFailure("create folder", fromFsPath(folder), error.value());
    }
    for (const Move &move : m_files)
        if (Outcome moved = moveOne(move); !moved)
            return moved;
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
    for (auto folder = m_madeFolders.rbegin(); folder != m_madeFolders.rend(); ++folder)
        fs::remove(*folder, ignored);
}

} // namespace KODMS::Services
