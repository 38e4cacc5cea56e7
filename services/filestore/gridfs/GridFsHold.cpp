// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsHold.h"

#include "services/filestore/gridfs/GridFsCatalog.h"
#include "services/filestore/gridfs/GridFsReader.h"
#include "services/filestore/gridfs/GridFsSweeper.h"

namespace KODMS::Services {

GridFsHold::GridFsHold(std::shared_ptr<GridFsServer> server, std::unique_ptr<GridFsPulse> pulse)
    : m_server(std::move(server)), m_pulse(std::move(pulse))
{
}

Result<std::unique_ptr<StoreHold>> GridFsHold::create(const std::shared_ptr<GridFsServer> &server)
{
    auto pulse = GridFsPulse::begin(server, GridFsPulse::Kind::Hold);
    if (!pulse)
        return pulse.outcome;
    return std::unique_ptr<StoreHold>(new GridFsHold(server, std::move(pulse.value)));
}

GridFsHold::~GridFsHold()
{
    const bool wasHeard = m_pulse->isHeard();
    m_pulse.reset();
    if (!wasHeard)
        return;
    // What cannot be removed now is removed by the next sweep.
    const GridFsPlace place(m_server);
    const Outcome swept = GridFsSweeper(place).sweepOurs();
    Q_UNUSED(swept)
}

Result<GridFsFile> GridFsHold::file(const QString &name) const
{
    // A file that is being removed is noted there before it goes here.
    const GridFsPlace place(m_server);
    const auto stored = GridFsCatalog(place).find(name);
    if (stored)
        return stored;
    std::optional<GridFsFile> removed;
    Bson latest;
    latest.document("sort", Bson().small("seen", -1));
    const Outcome read = place.each(GridFsPlace::Removed, Bson().text("filename", name), latest,
                                    [&removed](const BsonView &document) {
                                        removed = GridFsFile::parse(document);
                                        return !removed;
                                    });
    if (!read)
        return read;
    return removed ? Result<GridFsFile>(*removed) : stored;
}

Result<StoredFileInfo> GridFsHold::find(const QString &name) const
{
    const auto found = file(name);
    if (!found)
        return found.outcome;
    StoredFileInfo info = found.value.info();
    if (found.value.isOurs())
        return info;
    NoProgress silent;
    const auto digest = digestOfGridFsFile(m_server, found.value, silent);
    if (!digest)
        return digest.outcome;
    info.sha256 = digest.value;
    return info;
}

Outcome GridFsHold::read(const QString &name, const ByteSink &sink, Progress &progress) const
{
    const auto found = file(name);
    return found ? readGridFsFile(m_server, found.value, sink, progress) : found.outcome;
}

} // namespace KODMS::Services
