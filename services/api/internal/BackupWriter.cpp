// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/BackupWriter.h"

#include "services/api/internal/BackupReader.h"
#include "services/archive/TarWriter.h"
#include "services/filestore/HashedStream.h"
#include "services/filestore/LocalTarget.h"
#include "services/records/DatabaseSnapshot.h"
#include "services/records/TimeText.h"

#include <QFileInfo>

namespace KODMS::Services {

BackupSummary summaryOf(const BackupManifest &manifest)
{
    BackupSummary summary;
    summary.time = manifest.time;
    summary.schemaVersion = manifest.schemaVersion;
    summary.flows = manifest.flows;
    summary.files = manifest.files.size();
    summary.bytes = manifest.bytes();
    summary.recordsSha256 = QString::fromLatin1(manifest.records.sha256);
    return summary;
}

Result<BackupSummary> BackupWriter::write(const QString &path)
{
    Result<LocalTarget> target = LocalTarget::create(path);
    if (!target)
        return target.outcome;
    {
        // The hold comes first: what the records name from now on stays readable.
        const auto hold = m_store.hold();
        if (!hold)
            return hold.outcome;
        m_manifest.time = storedNow();
        const auto snapshot = DatabaseSnapshot::take(m_configuration.database);
        if (!snapshot)
            return snapshot.outcome;
        if (Outcome described = describe(*snapshot.value, *hold.value); !described)
            return described;
        const auto tar = TarWriter::create(target.value.file());
        if (!tar)
            return tar.outcome;
        if (Outcome written = writeAll(*tar.value, *snapshot.value, *hold.value); !written)
            return written;
    }
    if (Outcome synced = target.value.file().sync(); !synced)
        return synced;
    // A backup is only worth what can be read of it.
    const auto readBack = BackupReader(m_progress).read(target.value.file().path(), {});
    if (!readBack)
        return readBack.outcome;
    if (Outcome published = target.value.publish(); !published)
        return published;
    if (Outcome synced = syncFolder(QFileInfo(path).absolutePath()); !synced)
        return synced;
    return summaryOf(m_manifest);
}

Outcome BackupWriter::describe(const DatabaseSnapshot &snapshot, const StoreHold &hold)
{
    const DatabaseContents &contents = snapshot.contents();
    m_manifest.engine = databaseEngine(m_configuration.database);
    m_manifest.schemaVersion = contents.schemaVersion;
    m_manifest.flows = contents.flows;
    Result<FileHandle> file = FileHandle::openForReading(snapshot.path());
    if (!file)
        return file.outcome;
    NoProgress silent;
    const auto sums = streamHashed(file.value, {}, silent);
    if (!sums)
        return sums.outcome;
    m_manifest.records = {BackupManifest::recordsEntry(), sums.value.size, sums.value.sha256};
    for (const QString &name : contents.storedNames) {
        const auto info = hold.find(name);
        if (!info)
            return info.outcome;
        m_manifest.files.append(info.value);
    }
    // Once to write, once to read back.
    m_progress.setTotal(2 * (m_manifest.bytes() + m_manifest.records.size));
    return Outcome::success();
}

Outcome BackupWriter::writeAll(TarWriter &tar, const DatabaseSnapshot &snapshot,
                               const StoreHold &hold)
{
    const QByteArray list = m_manifest.toText();
    Outcome done = tar.begin(BackupManifest::entryName(), list.size());
    if (done)
        done = tar.write(list.constData(), list.size());
    if (done)
        done = writeRecords(tar, snapshot.path());
    const auto sink = [&tar](const char *data, qint64 size) { return tar.write(data, size); };
    for (const StoredFileInfo &file : qAsConst(m_manifest.files)) {
        if (done)
            done = tar.begin(BackupManifest::fileEntry(file.name), file.size);
        if (done)
            done = hold.read(file.name, sink, m_progress);
        if (!done)
            return done;
    }
    return done ? tar.finish() : done;
}

Outcome BackupWriter::writeRecords(TarWriter &tar, const QString &path)
{
    Result<FileHandle> file = FileHandle::openForReading(path);
    if (!file)
        return file.outcome;
    if (Outcome begun = tar.begin(BackupManifest::recordsEntry(), m_manifest.records.size); !begun)
        return begun;
    const auto sums = streamHashed(
        file.value, [&tar](const char *data, qint64 size) { return tar.write(data, size); },
        m_progress);
    return sums ? compareSums(m_manifest.records, sums.value) : sums.outcome;
}

} // namespace KODMS::Services
