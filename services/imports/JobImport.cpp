// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/imports/JobImport.h"

#include "services/archive/FolderPacker.h"
#include "services/disk/StagedFile.h"
#include "services/odbpp/OdbJobReader.h"
#include "services/records/Guid.h"
#include "services/session/Runtime.h"
#include "services/session/TakeBack.h"

#include <QCoreApplication>
#include <QDir>

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
    if (isRunning()) // else the next check finds it
        takeBackUnrecorded(*m_runtime, m_storedName);
}

Outcome JobImport::mayBegin() const
{
    return ImportChanges::mayImport(m_flowGuid, m_kind, m_userId);
}

/// What goes wrong after the file was put leaves it to the destructor.
Outcome JobImport::store(Progress &progress)
{
    Outcome stored = m_read.isFolder ? storeFolder(progress) : storeArchive(progress);
    if (!stored)
        return stored;
    const auto found = m_runtime->fileStore().find(m_storedName);
    if (!found)
        return found.outcome;
    m_sha256 = found.value.sha256;
    return stored;
}

Outcome JobImport::put(const QString &path, Progress &progress)
{
    Outcome stored = m_runtime->fileStore().put(path, m_storedName, progress);
    m_isStored = stored.ok;
    return stored;
}

Outcome JobImport::storeArchive(Progress &progress)
{
    if (Outcome same = m_read.isUnchanged(); !same)
        return same;
    if (Outcome stored = put(m_read.path, progress); !stored)
        return stored;
    return m_read.isUnchanged();
}

Outcome JobImport::storeFolder(Progress &progress)
{
    const QString staging = QDir(m_runtime->configuration().paths.staging).absolutePath();
    if (Outcome made = makeFolder(staging); !made)
        return made;
    const StagedFile zip(QDir(staging).filePath(m_storedName));
    return packAndPut(zip.path(), progress);
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
    return put(zip, progress);
}

Result<std::optional<EarlierImport>> JobImport::sameBefore() const
{
    if (!isRunning())
        return std::optional<EarlierImport>();
    return ImportChanges::earlier(m_flowGuid, m_sha256);
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
