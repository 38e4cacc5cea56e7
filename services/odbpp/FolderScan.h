// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Progress.h"
#include "services/odbpp/JobScan.h"

#include <filesystem>
#include <vector>

namespace KODMS::Services {

/// Hands the files of a folder to a scan: all by name, the wanted ones with their
/// content. Refuses links and special files, which could not be packed either.
class FolderScan {
public:
    FolderScan(const LimitSettings &limits, Progress &progress);

    Outcome run(const QString &folder, JobScan &scan);

private:
    struct Member {
        std::filesystem::path path;
        QString name; ///< below the folder, the folder's own name first
        qint64 size = 0;
    };

    Outcome collect(const std::filesystem::path &folder, const QString &prefix, int depth);
    Outcome add(const std::filesystem::path &path, const QString &name, int depth);
    Outcome read(const Member &member, JobScan &scan);

    LimitSettings m_limits;
    Progress &m_progress;
    std::vector<Member> m_members;
    std::vector<char> m_buffer;
    qint64 m_entries = 0;
    qint64 m_wantedBytes = 0;
};

} // namespace KODMS::Services
