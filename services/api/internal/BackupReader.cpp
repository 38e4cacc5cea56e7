// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/BackupReader.h"

#include "services/archive/ArchiveReader.h"
#include "services/disk/IoFailure.h"
#include "services/disk/Sha256.h"
#include "services/filestore/HashedStream.h"

#include <QCoreApplication>

#include <vector>

namespace KODMS::Services {

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 18;
constexpr int LargestList = 1 << 30;

Outcome damaged(const QString &cause)
{
    return Outcome::failure(QCoreApplication::translate("Backup", "不是备份文件，或已损坏"), cause);
}

} // namespace

Result<BackupManifest> BackupReader::read(const QString &path, BackupVisitor *visitor)
{
    m_visitor = visitor;
    const auto tar = ArchiveReader::open(path);
    if (!tar)
        return tar.outcome;
    if (tar.value->type() != ArchiveType::Tar)
        return damaged(QStringLiteral("%1 is no tar file").arg(path));
    if (Outcome read = readManifest(*tar.value); !read)
        return read;
    const QString records = BackupManifest::recordsEntry();
    if (Outcome read = readPart(*tar.value, records, m_manifest.records); !read)
        return read;
    for (const StoredFileInfo &file : qAsConst(m_manifest.files)) {
        const QString entry = BackupManifest::fileEntry(file.name);
        if (Outcome read = readPart(*tar.value, entry, file); !read)
            return read;
    }
    if (Outcome end = readEnd(*tar.value); !end)
        return end;
    return m_manifest;
}

Outcome BackupReader::open(ArchiveReader &tar, const QString &entryName)
{
    ArchiveEntry entry;
    bool hasEntry = false;
    if (Outcome next = tar.next(entry, hasEntry); !next)
        return next;
    if (!hasEntry || entry.kind != ArchiveEntry::Kind::File || entry.name != entryName)
        return damaged(QStringLiteral("%1 is not where it should be").arg(entryName));
    return Outcome::success();
}

Outcome BackupReader::readManifest(ArchiveReader &tar)
{
    if (Outcome opened = open(tar, BackupManifest::entryName()); !opened)
        return opened;
    QByteArray text;
    std::vector<char> piece(PieceSize);
    for (;;) {
        const auto got = tar.read(piece.data(), static_cast<qint64>(piece.size()));
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        if (text.size() > LargestList)
            return damaged(QStringLiteral("the list is too long"));
        text.append(piece.data(), static_cast<int>(got.value));
    }
    auto manifest = BackupManifest::parse(text);
    if (!manifest)
        return manifest.outcome;
    m_manifest = std::move(manifest.value);
    return m_visitor ? m_visitor->manifest(m_manifest) : Outcome::success();
}

Outcome BackupReader::readPart(ArchiveReader &tar, const QString &entryName,
                               const StoredFileInfo &part)
{
    Outcome done = open(tar, entryName);
    if (done && m_visitor)
        done = m_visitor->begin(part, entryName == BackupManifest::recordsEntry());
    if (!done)
        return done;
    Sha256 hash;
    StreamSums sums;
    std::vector<char> piece(PieceSize);
    for (;;) {
        if (m_progress.isCancelled())
            return cancelledFailure();
        const auto got = tar.read(piece.data(), static_cast<qint64>(piece.size()));
        if (!got)
            return got.outcome;
        if (got.value == 0)
            break;
        hash.add(piece.data(), got.value);
        sums.size += got.value;
        m_progress.advance(got.value);
        if (m_visitor)
            done = m_visitor->data(piece.data(), got.value);
        if (!done)
            return done;
    }
    sums.sha256 = hash.finish();
    done = compareSums(part, sums);
    return done && m_visitor ? m_visitor->end() : done;
}

Outcome BackupReader::readEnd(ArchiveReader &tar)
{
    ArchiveEntry entry;
    bool hasEntry = false;
    if (Outcome next = tar.next(entry, hasEntry); !next)
        return next;
    return hasEntry ? damaged(QStringLiteral("more than its list names")) : Outcome::success();
}

} // namespace KODMS::Services
