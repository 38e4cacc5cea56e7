// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QString>

#include <filesystem>
#include <vector>

namespace KODMS::Services {

/// Moves the contents of one folder into another on the same file system: all of
/// them, or, when one cannot be moved, none. Files that stand in the target stay
/// unless the new contents have one of that name; a folder that is new there moves
/// as one. Never goes through a link.
class FolderMerge {
public:
    FolderMerge(const QString &from, const QString &into);

    /// When cancelled, everything is as it was.
    Outcome run(const Progress &progress);

private:
    struct Move {
        std::filesystem::path from;
        std::filesystem::path to;
    };

    Outcome plan(const std::filesystem::path &relative);
    Outcome planChild(const std::filesystem::path &child, const std::filesystem::path &relative);
    Outcome moveAll(const Progress &progress);
    Outcome moveOne(const Move &move);
    void undo();

    std::filesystem::path m_from;
    std::filesystem::path m_into;
    std::filesystem::path m_aside; ///< replaced files wait here until all is done
    std::vector<Move> m_moves;
    std::vector<Move> m_done;
    bool m_hasMadeTarget = false;
};

} // namespace KODMS::Services
