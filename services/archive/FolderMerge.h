// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

#include <filesystem>
#include <vector>

namespace KODMS::Services {

/// Moves the contents of one folder into another on the same file system: all of
/// them, or, when one cannot be moved, none. Files that stand in the target stay
/// unless the new contents have one of that name. Never goes through a link.
class FolderMerge {
public:
    FolderMerge(const QString &from, const QString &into);

    Outcome run();

private:
    struct Move {
        std::filesystem::path from;
        std::filesystem::path to;
    };

    Outcome plan(const std::filesystem::path &relative);
    Outcome planFile(const std::filesystem::path &relative);
    Outcome moveAll();
    Outcome moveOne(const Move &move);
    void undo();

    std::filesystem::path m_from;
    std::filesystem::path m_into;
    std::filesystem::path m_aside; ///< replaced files wait here until all is done
    std::vector<std::filesystem::path> m_newFolders;
    std::vector<Move> m_files;
    std::vector<Move> m_done;
    std::vector<std::filesystem::path> m_madeFolders;
};

} // namespace KODMS::Services
