// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsRemoval.h"

#include "services/filestore/StoreFailures.h"
#include "services/filestore/gridfs/GridFsPulse.h"

namespace KODMS::Services {

namespace {

constexpr qint64 ChunksAtOnce = 512;

} // namespace

Outcome GridFsRemoval::remove(const QString &name) const
{
    const auto found = GridFsCatalog(m_place).revisions(name);
    if (!found)
        return found.outcome;
    if (found.value.empty())
        return missingFailure(name);
    for (const GridFsFile &file : found.value)
        if (Outcome removed = removeOne(file); !removed)
            return removed;
    return Outcome::success();
}

Outcome GridFsRemoval::removeOne(const GridFsFile &file) const
{
    // What a hold needs to find it: the same as in BUCKET.files.
    Bson kept = GridFsPulse::seenNow();
    Bson fields;
    fields.text("filename", file.name)
        .number("length", file.size)
        .number("chunkSize", file.chunkSize)
        .document(
            "metadata",
            Bson().text("sha256", QString::fromLatin1(file.sha256)).text("owner", file.owner));
    kept.document("$set", fields);
    const auto noted =
        m_place.updateOrInsert(GridFsPlace::Removed, Bson().id("_id", file.id), kept);
    if (!noted)
        return noted.outcome;
    const auto gone = m_place.remove(GridFsPlace::Files, Bson().id("_id", file.id));
    if (!gone)
        return gone.outcome;
    if (gone.value == 0) // by somebody else, at the same time
        return missingFailure(file.name);
    const auto held = isHeld();
    // It is removed; what remains of it is for the next sweep.
    if (!held || held.value)
        return Outcome::success();
    const Outcome finished = finish(file.id);
    Q_UNUSED(finished)
    return Outcome::success();
}

Outcome GridFsRemoval::finish(const GridFsId &id) const
{
    if (Outcome removed = removeChunks(id); !removed)
        return removed;
    return m_place.remove(GridFsPlace::Removed, Bson().id("_id", id)).outcome;
}

Outcome GridFsRemoval::removeChunks(const GridFsId &id) const
{
    for (;;) {
        const auto last = lastChunk(id);
        if (!last || !last.value)
            return last.outcome;
        Bson some;
        some.id("files_id", id);
        if (*last.value >= 0)
            some.document("n", Bson().number("$gt", *last.value - ChunksAtOnce));
        if (const auto removed = m_place.remove(GridFsPlace::Chunks, some); !removed)
            return removed.outcome;
    }
}

Result<std::optional<qint64>> GridFsRemoval::lastChunk(const GridFsId &id) const
{
    std::optional<qint64> last;
    Bson options;
    options.document("sort", Bson().small("n", -1))
        .document("projection", Bson().small("_id", 0).small("n", 1))
        .number("limit", 1);
    const Outcome found = m_place.each(GridFsPlace::Chunks, Bson().id("files_id", id), options,
                                       [&last](const BsonView &chunk) {
                                           last = chunk.number("n");
                                           return false;
                                       });
    if (!found)
        return found;
    return last;
}

Result<bool> GridFsRemoval::isHeld() const
{
    return m_place.any(GridFsPlace::Live,
                       Bson().text("kind", GridFsPulse::textOf(GridFsPulse::Kind::Hold)));
}

} // namespace KODMS::Services
