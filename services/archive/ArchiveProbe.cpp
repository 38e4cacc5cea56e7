// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveProbe.h"

namespace KODMS::Services {

namespace {

class LookingVisitor final : public ArchiveVisitor {
public:
    Outcome folder(const QString &) override { return Outcome::success(); }

    Outcome beginFile(const QString &) override { return Outcome::success(); }

    Outcome data(const char *, qint64) override { return Outcome::success(); }

    Outcome endFile() override { return Outcome::success(); }

    Outcome copy(const QString &, const QString &) override { return Outcome::success(); }
};

} // namespace

Result<ArchiveSummary> probeArchive(const QString &path, const LimitSettings &limits,
                                    Progress &progress)
{
    LookingVisitor visitor;
    return ArchiveWalk(limits, progress).run(path, visitor);
}

} // namespace KODMS::Services
