// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/imports/JobImport.h"

#include "services/archive/FolderPacker.h"
#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/odbpp/OdbJobReader.h"
#include "services/records/Guid.h"
#include "services/session/Runtime.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace KODMS::Services {

namespace {

QString suffixOf(const ReadJob &read)
{
    return read.isFolder ? QStringLiteral("zip") : read.type;
}

/// What an import writes down of a job.
bool isSameJob(const OdbJob &a, const OdbJob &b)
{
    return a.name == b.name && a.steps == b.steps && a.layerCount() == b.layerCount() &&
           a.layers.size() == b.layers.size() && a.featureCount == b.featureCount;
}

} // namespace

JobImport::JobImport(Runtime &runtime, const QString &flowGuid, ImportKind kind,
                     const ReadJob &read)
    : m_runtime(&runtime), m_flowGuid(flowGuid), m_kind(kind), m_read(read),
      m_userId(runtime.records().actor().userId),
      m_storedName(newGuid() + QLatin1Char('.') + suffixOf(read))
{
}

JobImport::~JobImport()
{
    if (m_isStored)
        takeBack();
}

/// The services may have been stopped meanwhile, and the store with them.
bool JobImport::isRunning() const
{
    return Runtime::current() == m_runtime;
}

void JobImport::takeBack()
{
    m_isStored = false;
    if (!isRunning())
        return; // the next check finds it
    const Outcome removed = m_runtime->fileStore().remove(m_storedName);
    if (!removed)
        qCInfo(lcFileStore).noquote() << "import" << oneLine(removed.cause);
}

Outcome JobImport::mayBegin() const
{
    return ImportChanges::mayImport(m_flowGuid, m_kind, m_userId);
}

Outcome JobImport::store(Progress &progress)
{
    Outcome stored = storeBody(progress);
    m_isStored = stored.ok;
    return stored;
}

Outcome JobImport::storeBody(Progress &progress)
{
    Outcome stored = m_read.isFolder ? storeFolder(progress) : storeArchive(progress);
    if (!stored)
        return stored;
    const auto found = m_runtime->fileStore().find(m_storedName);
    if (!found) {
        takeBack();
        return found.outcome;
    }
    m_sha256 = found.value.sha256;
    return stored;
}

Outcome JobImport::storeArchive(Progress &progress)
{
    if (Outcome same = m_read.isUnchanged(); !same)
        return same;
    FileStore &store = m_runtime->fileStore();
    if (Outcome put = store.put(m_read.path, m_storedName, progress); !put)
        return put;
    Outcome same = m_read.isUnchanged();
    if (!same)
        takeBack();
    return same;
}

Outcome JobImport::storeFolder(Progress &progress)
{
    const QString staging = QDir(m_runtime->configuration().paths.staging).absolutePath();
    if (Outcome made = makeFolder(staging); !made)
        return made;
    const QString zip = QDir(staging).filePath(m_storedName);
    Outcome stored = packAndPut(zip, progress);
    QFile::remove(zip);
    return stored;
}

/// The packed job is read once more: what is stored is what was shown.
Outcome JobImport::packAndPut(const QString &zip, Progress &progress)
{
    const LimitSettings &limits = m_runtime->configuration().limits;
    const auto packed = packFolder(m_read.path, zip, limits, progress);
    if (!packed)
        return packed.outcome;
    const auto again = readOdbJob(zip, limits, progress);
    if (!again)
        return again.outcome;
    if (!isSameJob(again.value, m_read.job))
        return changedSinceRead(m_read.path);
    return m_runtime->fileStore().put(zip, m_storedName, progress);
}

std::optional<EarlierImport> JobImport::sameBefore() const
{
    if (!isRunning())
        return std::nullopt;
    const auto earlier = ImportChanges::earlier(m_flowGuid, m_sha256);
    return earlier ? earlier.value : std::nullopt;
}

Outcome JobImport::record()
{
    ImportedJob job;
    job.flowGuid = m_flowGuid;
    job.kind = m_kind;
    job.userId = m_userId;
    job.file.guid = newGuid();
    job.file.baseName = m_read.job.name;
    job.file.storedName = m_storedName;
    job.file.fileType = m_read.type;
    job.sha256 = m_sha256;
    job.origJobName = m_read.job.name;
    job.layerCount = m_read.job.layerCount();
    job.featureCount = static_cast<int>(m_read.job.featureCount);
    Outcome recorded = ImportChanges::record(job);
    if (recorded)
        m_isStored = false; // it belongs to the records now
    else
        takeBack();
    return recorded;
}

} // namespace KODMS::Services
