// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsStore.h"

#include "services/filestore/LocalTarget.h"
#include "services/filestore/StoreFailures.h"
#include "services/filestore/gridfs/GridFsCatalog.h"
#include "services/filestore/gridfs/GridFsHold.h"
#include "services/filestore/gridfs/GridFsPut.h"
#include "services/filestore/gridfs/GridFsReader.h"
#include "services/filestore/gridfs/GridFsRemoval.h"
#include "services/filestore/gridfs/GridFsSweeper.h"
#include "services/notices/NoticeHub.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

struct GridFsStoreTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::GridFsStore)

public:
    static QString place(const GridFsServer &server)
    {
        return tr("文件服务器 %1，库 %2，桶 %3")
            .arg(server.addressText(), server.database(), server.bucket());
    }
};

/// A dot would end a database's name.
bool isDatabaseName(const QString &name)
{
    constexpr int Longest = 63;
    return FileStore::isValidStoredName(name) && name.size() <= Longest &&
           !name.contains(QLatin1Char('.'));
}

} // namespace

Result<std::unique_ptr<FileStore>> GridFsStore::open(const FileStoreSettings &settings)
{
    if (!isDatabaseName(settings.database))
        return badNameFailure(settings.database);
    if (!isValidStoredName(settings.bucket))
        return badNameFailure(settings.bucket);
    const auto server = GridFsServer::at(settings);
    if (!server)
        return server.outcome;
    const GridFsPlace place(server.value);
    if (const auto now = place.now(); !now)
        return now.outcome;
    // A place that this user may only read is swept by those who write there.
    if (const Outcome swept = GridFsSweeper(place).sweepOurs(); !swept)
        qCInfo(lcFileStore).noquote() << "sweep:" << swept.cause;
    return std::unique_ptr<FileStore>(new GridFsStore(server.value));
}

GridFsStore::~GridFsStore() = default;

Result<GridFsPulse *> GridFsStore::pulse()
{
    const std::lock_guard<std::mutex> guard(m_pulseMutex);
    if (!m_pulse) {
        auto begun = GridFsPulse::begin(m_server, GridFsPulse::Kind::Owner);
        if (!begun)
            return begun.outcome;
        m_pulse = std::move(begun.value);
    }
    return m_pulse.get();
}

Outcome GridFsStore::put(const QString &localPath, const QString &name, Progress &progress)
{
    if (!isValidStoredName(name))
        return badNameFailure(name);
    const auto living = pulse();
    if (!living)
        return living.outcome;
    return GridFsPut(m_server, *living.value, name).run(localPath, progress);
}

Result<GridFsFile> GridFsStore::file(const QString &name) const
{
    const GridFsPlace place(m_server);
    return GridFsCatalog(place).find(name);
}

Outcome GridFsStore::read(const GridFsFile &file, const ByteSink &sink, Progress &progress) const
{
    const Outcome done = readGridFsFile(m_server, file, sink, progress);
    if (done || progress.isCancelled())
        return done;
    // Removed while it was read: then it is not damaged.
    const GridFsPlace place(m_server);
    const auto isThere = GridFsCatalog(place).hasId(file.id);
    return isThere && !isThere.value ? missingFailure(file.name) : done;
}

Outcome GridFsStore::get(const QString &name, const QString &localPath, Progress &progress) const
{
    Result<LocalTarget> target = LocalTarget::create(localPath);
    if (!target)
        return target.outcome;
    const auto stored = file(name);
    if (!stored)
        return stored.outcome;
    progress.setTotal(stored.value.size);
    FileHandle &local = target.value.file();
    const auto sink = [&local](const char *data, qint64 size) { return local.write(data, size); };
    if (Outcome done = read(stored.value, sink, progress); !done)
        return done;
    return target.value.publish();
}

Outcome GridFsStore::remove(const QString &name)
{
    if (!isValidStoredName(name))
        return badNameFailure(name);
    const GridFsPlace place(m_server);
    return GridFsRemoval(place).remove(name);
}

Result<bool> GridFsStore::has(const QString &name) const
{
    if (!isValidStoredName(name))
        return false;
    const GridFsPlace place(m_server);
    return GridFsCatalog(place).has(name);
}

Result<StoredFileInfo> GridFsStore::find(const QString &name) const
{
    const auto stored = file(name);
    if (!stored)
        return stored.outcome;
    return stored.value.info();
}

Result<QVector<StoredFileInfo>> GridFsStore::list() const
{
    const GridFsPlace place(m_server);
    return GridFsCatalog(place).list();
}

Outcome GridFsStore::verify(const QString &name, Progress &progress) const
{
    const auto stored = file(name);
    return stored ? read(stored.value, {}, progress) : stored.outcome;
}

Result<std::unique_ptr<StoreHold>> GridFsStore::hold()
{
    return GridFsHold::create(m_server);
}

bool GridFsStore::isPutterAlive(const QString &name) const
{
    const GridFsPlace place(m_server);
    const GridFsCatalog catalog(place);
    const auto isThere = catalog.has(name);
    if (!isThere || !isThere.value)
        return !isThere;
    const auto stored = catalog.find(name);
    if (!stored || stored.value.owner.isEmpty())
        return true;
    const auto heard = isHeardOf(stored.value.owner);
    return !heard || heard.value;
}

Result<bool> GridFsStore::isHeardOf(const QString &owner) const
{
    const GridFsPlace place(m_server);
    const auto now = place.now();
    if (!now)
        return now.outcome;
    return place.any(GridFsPlace::Live,
                     Bson()
                         .text("_id", owner)
                         .document("seen", Bson().time("$gte", now.value - GridFsPulse::GoneMs)));
}

Result<QStringList> GridFsStore::leftovers() const
{
    const GridFsPlace place(m_server);
    return GridFsSweeper(place).leftovers();
}

Outcome GridFsStore::sweep()
{
    const GridFsPlace place(m_server);
    return GridFsSweeper(place).sweep();
}

QString GridFsStore::placeText() const
{
    return GridFsStoreTexts::place(*m_server);
}

} // namespace KODMS::Services
