// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbJobReader.h"

#include "services/archive/ArchiveWalk.h"
#include "services/odbpp/FolderScan.h"
#include "services/odbpp/JobScan.h"

#include <QDir>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

/// Hands the wanted files of an archive to the scan.
class ScanningVisitor final : public ArchiveVisitor {
public:
    explicit ScanningVisitor(JobScan &scan) : m_scan(scan) {}

    Outcome folder(const QString &) override { return Outcome::success(); }

    Outcome beginFile(const QString &path) override { return m_scan.begin(path); }

    Outcome data(const char *bytes, qint64 size) override
    {
        m_scan.data(bytes, size);
        return Outcome::success();
    }

    Outcome endFile() override
    {
        m_scan.end();
        return Outcome::success();
    }

    Outcome copy(const QString &from, const QString &to) override { return m_scan.copy(from, to); }

private:
    JobScan &m_scan;
};

/// Without the suffix of an archive, which may have two parts.
QString archiveName(const QFileInfo &info)
{
    const QString tar = QStringLiteral(".tar");
    const QString name = info.completeBaseName();
    return name.endsWith(tar, Qt::CaseInsensitive) ? name.chopped(tar.size()) : name;
}

} // namespace

Result<OdbJob> readOdbJob(const QString &path, const LimitSettings &limits, Progress &progress)
{
    const QFileInfo info(QDir::cleanPath(path));
    JobScan scan(limits);
    if (info.isDir()) {
        if (Outcome read = FolderScan(limits, progress).run(info.absoluteFilePath(), scan); !read)
            return read;
        return scan.finish(info.fileName());
    }
    ScanningVisitor visitor(scan);
    const auto walked = ArchiveWalk(limits, progress).run(info.absoluteFilePath(), visitor);
    if (!walked)
        return walked.outcome;
    return scan.finish(archiveName(info));
}

} // namespace KODMS::Services
