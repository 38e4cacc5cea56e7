// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveLimits.h"
#include "services/archive/EntryPath.h"
#include "services/archive/EntrySource.h"
#include "services/archive/LinkPlan.h"
#include "services/archive/PathClashes.h"
#include "services/notices/Progress.h"

#include <vector>

namespace KODMS::Services {

/// Receives the contents of an archive that has passed every check so far. Paths
/// are safe ones below the target. A failure ends the walk.
class ArchiveVisitor {
public:
    virtual ~ArchiveVisitor() = default;
    virtual Outcome folder(const QString &path) = 0;
    virtual Outcome beginFile(const QString &path) = 0;
    virtual Outcome data(const char *bytes, qint64 size) = 0;
    virtual Outcome endFile() = 0;
    /// After everything else: a second file with the content of the first.
    virtual Outcome copy(const QString &from, const QString &to) = 0;
};

struct ArchiveSummary {
    ArchiveType type = ArchiveType::Unknown;
    qint64 entries = 0;
    qint64 files = 0;
    qint64 bytes = 0;
};

/// Goes through an archive once, from its first to its last byte, refusing what is
/// damaged, hostile or beyond the limits. What is declared is not believed: the
/// limits count what comes out.
class ArchiveWalk {
public:
    ArchiveWalk(const LimitSettings &limits, Progress &progress);

    Result<ArchiveSummary> run(const QString &path, ArchiveVisitor &visitor);

private:
    Outcome visit(EntrySource &reader, const ArchiveEntry &entry, ArchiveVisitor &visitor);
    Outcome visitFile(EntrySource &reader, const QString &name, const QString &path,
                      ArchiveVisitor &visitor);
    Outcome visitLink(const ArchiveEntry &entry, const QString &path);
    Outcome visitCopies(ArchiveVisitor &visitor);
    Outcome count(qint64 bytes, const QString &entry);
    void report(const EntrySource &reader);

    LimitSettings m_limits;
    Progress &m_progress;
    ArchiveSummary m_summary;
    PathClashes m_clashes;
    LinkPlan m_links;
    QHash<QString, qint64> m_fileSizes;
    std::vector<char> m_buffer;
    qint64 m_allowedBytes = 0;
    qint64 m_reported = 0;
};

} // namespace KODMS::Services
