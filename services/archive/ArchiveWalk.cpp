// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveWalk.h"

#include "services/disk/IoFailure.h"
#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 18;

struct ArchiveWalkTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::ArchiveWalk)

public:
    static Outcome special(const QString &entry)
    {
        return entryRefused(entry, tr("不是文件或文件夹"),
                            QStringLiteral("neither file nor folder"));
    }
};

} // namespace

ArchiveWalk::ArchiveWalk(const LimitSettings &limits, Progress &progress)
    : m_limits(limits), m_progress(progress), m_clashes(limits.archiveEntries), m_buffer(BufferSize)
{
}

Result<ArchiveSummary> ArchiveWalk::run(const QString &path, ArchiveVisitor &visitor)
{
    const auto reader = EntrySource::open(path, m_limits.archiveEntries);
    if (!reader)
        return reader.outcome;
    const qint64 size = QFileInfo(path).size();
    m_allowedBytes = allowedBytes(size, m_limits);
    m_summary.type = reader.value->type();
    m_progress.setTotal(size);
    for (;;) {
        ArchiveEntry entry;
        bool hasEntry = false;
        if (Outcome read = reader.value->next(entry, hasEntry); !read)
            return read;
        if (!hasEntry)
            break;
        if (Outcome visited = visit(*reader.value, entry, visitor); !visited)
            return visited;
    }
    if (Outcome copied = visitCopies(visitor); !copied)
        return copied;
    return m_summary;
}

Outcome ArchiveWalk::visit(EntrySource &reader, const ArchiveEntry &entry, ArchiveVisitor &visitor)
{
    if (m_progress.isCancelled())
        return cancelledFailure();
    if (++m_summary.entries > m_limits.archiveEntries)
        return tooManyEntries(entry.name, m_limits.archiveEntries);
    const Result<EntryPath> path = EntryPath::of(entry.name);
    if (!path)
        return path.outcome;
    if (path.value.isMapped)
        qCInfo(lcArchive).noquote()
            << "entry" << oneLine(entry.name) << "becomes" << path.value.path;
    report(reader);
    switch (entry.kind) {
    case ArchiveEntry::Kind::Folder:
        if (path.value.path.isEmpty())
            return Outcome::success();
        if (Outcome alone = m_clashes.addFolder(path.value.path); !alone)
            return alone;
        return visitor.folder(path.value.path);
    case ArchiveEntry::Kind::File:
        return visitFile(reader, entry.name, path.value.path, visitor);
    case ArchiveEntry::Kind::SymbolicLink:
    case ArchiveEntry::Kind::HardLink:
        return visitLink(entry, path.value.path);
    case ArchiveEntry::Kind::Other:
        break;
    }
    return ArchiveWalkTexts::special(entry.name);
}

Outcome ArchiveWalk::visitFile(EntrySource &reader, const QString &name, const QString &path,
                               ArchiveVisitor &visitor)
{
    if (path.isEmpty())
        return ArchiveWalkTexts::special(name);
    if (Outcome alone = m_clashes.addFile(path, name); !alone)
        return alone;
    if (Outcome begun = visitor.beginFile(path); !begun)
        return begun;
    qint64 size = 0;
    for (;;) {
        if (m_progress.isCancelled())
            return cancelledFailure();
        const Result<qint64> got =
            reader.read(m_buffer.data(), static_cast<qint64>(m_buffer.size()));
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        if (Outcome counted = count(got.value, path); !counted)
            return counted;
        if (Outcome taken = visitor.data(m_buffer.data(), got.value); !taken)
            return taken;
        size += got.value;
        report(reader);
    }
    m_links.addFile(path);
    m_fileSizes.insert(path, size);
    m_summary.files = m_fileSizes.size();
    return visitor.endFile();
}

Outcome ArchiveWalk::visitLink(const ArchiveEntry &entry, const QString &path)
{
    if (path.isEmpty())
        return ArchiveWalkTexts::special(entry.name);
    // A hard link names its file from the archive's root, a symbolic one from itself.
    const Result<EntryPath> target = entry.kind == ArchiveEntry::Kind::HardLink
                                         ? EntryPath::of(entry.linkTarget)
                                         : EntryPath::ofLink(path, entry.linkTarget);
    if (!target)
        return target.outcome;
    if (Outcome alone = m_clashes.addFile(path, entry.name); !alone)
        return alone;
    m_links.addLink(path, target.value.path);
    return Outcome::success();
}

Outcome ArchiveWalk::visitCopies(ArchiveVisitor &visitor)
{
    const auto copies = m_links.copies();
    if (!copies)
        return copies.outcome;
    for (const LinkPlan::Copy &copy : copies.value) {
        if (m_progress.isCancelled())
            return cancelledFailure();
        if (Outcome counted = count(m_fileSizes.value(copy.from), copy.to); !counted)
            return counted;
        if (Outcome copied = visitor.copy(copy.from, copy.to); !copied)
            return copied;
        ++m_summary.files;
    }
    return Outcome::success();
}

Outcome ArchiveWalk::count(qint64 bytes, const QString &entry)
{
    m_summary.bytes += bytes;
    return m_summary.bytes > m_allowedBytes ? tooManyBytes(entry, m_allowedBytes)
                                            : Outcome::success();
}

void ArchiveWalk::report(const EntrySource &reader)
{
    const qint64 position = reader.position();
    if (position <= m_reported)
        return;
    m_progress.advance(position - m_reported);
    m_reported = position;
}

} // namespace KODMS::Services
