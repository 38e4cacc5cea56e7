// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsSweeper.h"

#include "services/filestore/gridfs/GridFsPulse.h"
#include "services/filestore/gridfs/GridFsPut.h"
#include "services/filestore/gridfs/GridFsRemoval.h"
#include "services/notices/OneLine.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr std::size_t LookedUpAtOnce = 1000;

Bson seenBefore(qint64 time)
{
    Bson range;
    range.time("$lt", time);
    return range;
}

} // namespace

Outcome GridFsSweeper::sweepOurs() const
{
    const auto now = m_place.now();
    if (!now)
        return now.outcome;
    const auto gone = m_place.remove(
        GridFsPlace::Live, Bson().document("seen", seenBefore(now.value - GridFsPulse::GoneMs)));
    if (!gone)
        return gone.outcome;
    const auto puts = brokenPuts(now.value);
    if (!puts)
        return puts.outcome;
    for (const Remain &put : puts.value)
        if (Outcome cleared = clear(put, now.value); !cleared)
            return cleared;
    const auto removed = freeRemoved();
    if (!removed)
        return removed.outcome;
    for (const Remain &one : removed.value)
        if (Outcome finished = finishRemoval(one, now.value); !finished)
            return finished;
    return Outcome::success();
}

Outcome GridFsSweeper::sweepPut(const QString &name) const
{
    const auto now = m_place.now();
    if (!now)
        return now.outcome;
    const auto puts = brokenPuts(now.value);
    if (!puts)
        return puts.outcome;
    for (const Remain &put : puts.value) {
        if (put.name != name)
            continue;
        if (Outcome cleared = clear(put, now.value); !cleared)
            return cleared;
    }
    return Outcome::success();
}

Outcome GridFsSweeper::sweep() const
{
    if (Outcome swept = sweepOurs(); !swept)
        return swept;
    const auto now = m_place.now();
    if (!now)
        return now.outcome;
    const auto ids = strays();
    if (!ids)
        return ids.outcome;
    for (const GridFsId &id : ids.value)
        if (Outcome done = sweepStray(id, now.value); !done)
            return done;
    // The others were put to their end, or are gone.
    Bson others;
    if (!ids.value.empty())
        others.document("_id", Bson().ids("$nin", ids.value));
    return m_place.remove(GridFsPlace::Strays, others).outcome;
}

Result<QStringList> GridFsSweeper::leftovers() const
{
    const auto now = m_place.now();
    if (!now)
        return now.outcome;
    const auto puts = brokenPuts(now.value);
    const auto removed = freeRemoved();
    const auto chunks = strays();
    const auto foreign = GridFsCatalog(m_place).foreign();
    for (const Outcome &read : {puts.outcome, removed.outcome, chunks.outcome, foreign.outcome})
        if (!read)
            return read;
    QStringList found;
    for (const Remain &put : puts.value)
        found << QStringLiteral("puts/") + oneLine(put.name);
    for (const Remain &one : removed.value)
        found << QStringLiteral("removed/") + oneLine(one.name);
    for (const GridFsId &id : chunks.value)
        found << QStringLiteral("chunks/") + oneLine(id.text());
    for (const QString &name : foreign.value)
        found << QStringLiteral("files/") + oneLine(name);
    found.sort();
    return found;
}

Result<GridFsSweeper::Remains> GridFsSweeper::remainsIn(GridFsPlace::Part part) const
{
    const bool isPut = part == GridFsPlace::Puts;
    Remains found;
    const Outcome read = m_place.each(part, Bson(), Bson(), [&](const BsonView &document) {
        found.push_back({document.text(isPut ? "_id" : "filename"),
                         document.id(isPut ? "file" : "_id"), document.time("seen"),
                         document.text("state") == GridFsPut::brokenState()});
        return true;
    });
    if (!read)
        return read;
    return found;
}

Result<GridFsSweeper::Remains> GridFsSweeper::brokenPuts(qint64 now) const
{
    auto puts = remainsIn(GridFsPlace::Puts);
    const auto goesOn = [now](const Remain &put) {
        return !put.isBroken && put.seen >= now - GridFsPulse::GoneMs;
    };
    puts.value.erase(std::remove_if(puts.value.begin(), puts.value.end(), goesOn),
                     puts.value.end());
    return puts;
}

Result<GridFsSweeper::Remains> GridFsSweeper::freeRemoved() const
{
    // Listed before the holds are looked at: what a later hold needs is not in the list.
    auto removed = remainsIn(GridFsPlace::Removed);
    const auto held = GridFsRemoval(m_place).isHeld();
    if (!held)
        return held.outcome;
    if (held.value)
        removed.value.clear();
    return removed;
}

/// First the mark, by which the program that put it, should it live after all, knows that
/// it has failed.
Outcome GridFsSweeper::clear(const Remain &put, qint64 now) const
{
    const auto key = [&put] {
        Bson filter;
        filter.text("_id", put.name).id("file", put.id);
        return filter;
    };
    if (!put.isBroken) {
        Bson stale = key();
        stale.document("seen", seenBefore(now - GridFsPulse::GoneMs));
        Bson mark;
        mark.document("$set", Bson().text("state", GridFsPut::brokenState()));
        const auto marked = m_place.update(GridFsPlace::Puts, stale, mark);
        if (!marked || marked.value == 0)
            return marked.outcome;
    }
    const auto unpublished = m_place.remove(GridFsPlace::Files, Bson().id("_id", put.id));
    if (!unpublished)
        return unpublished.outcome;
    if (Outcome removed = GridFsRemoval(m_place).removeChunks(put.id); !removed)
        return removed;
    return m_place.remove(GridFsPlace::Puts, key()).outcome;
}

Outcome GridFsSweeper::finishRemoval(const Remain &removed, qint64 now) const
{
    const auto isThere = GridFsCatalog(m_place).hasId(removed.id);
    if (!isThere)
        return isThere.outcome;
    if (!isThere.value)
        return GridFsRemoval(m_place).finish(removed.id);
    // Noted, and not yet removed; after a while: never.
    Bson stale;
    stale.id("_id", removed.id).document("seen", seenBefore(now - GridFsPulse::GoneMs));
    return m_place.remove(GridFsPlace::Removed, stale).outcome;
}

Result<GridFsSweeper::Ids> GridFsSweeper::strays() const
{
    Ids candidates;
    Ids found;
    Outcome kept;
    const Outcome read =
        m_place.eachValue(GridFsPlace::Chunks, "files_id", [&](const GridFsId &id) {
            candidates.push_back(id);
            if (candidates.size() == LookedUpAtOnce)
                kept = keepStrays(candidates, found);
            return kept.ok;
        });
    if (read && kept)
        kept = keepStrays(candidates, found);
    if (!read || !kept)
        return read ? kept : read;
    return found;
}

/// Puts, then files, then what is removed: in this order a file passes through them.
Outcome GridFsSweeper::keepStrays(Ids &candidates, Ids &strays) const
{
    QSet<QString> known;
    Outcome read = addIds(GridFsPlace::Puts, Bson(), "file", known);
    if (read)
        read = addIds(GridFsPlace::Files, Bson().document("_id", Bson().ids("$in", candidates)),
                      "_id", known);
    if (read)
        read = addIds(GridFsPlace::Removed, Bson(), "_id", known);
    for (const GridFsId &id : candidates)
        if (read && !known.contains(id.text()))
            strays.push_back(id);
    candidates.clear();
    return read;
}

Outcome GridFsSweeper::addIds(GridFsPlace::Part part, const Bson &filter, const char *key,
                              QSet<QString> &known) const
{
    Bson options;
    options.document("projection", Bson().small(key, 1));
    return m_place.each(part, filter, options, [&](const BsonView &document) {
        known.insert(document.id(key).text());
        return true;
    });
}

/// An object id tells the time of whoever made it, which may be any. So a stray is noted with
/// the server's time when it is met, and again when it has grown since; it goes when it has
/// been noted for a day.
Outcome GridFsSweeper::sweepStray(const GridFsId &id, qint64 now) const
{
    const GridFsRemoval removal(m_place);
    const auto last = removal.lastChunk(id);
    if (!last || !last.value)
        return last.outcome;
    const auto asItIs = [&] {
        Bson filter;
        filter.id("_id", id).number("last", *last.value);
        return filter;
    };
    Bson noted = asItIs();
    noted.document("seen", seenBefore(now - ForeignPutMs));
    const auto isAbandoned = m_place.any(GridFsPlace::Strays, noted);
    if (!isAbandoned)
        return isAbandoned.outcome;
    if (isAbandoned.value) {
        const Outcome removed = removal.removeChunks(id);
        return removed ? m_place.remove(GridFsPlace::Strays, Bson().id("_id", id)).outcome
                       : removed;
    }
    const auto isNoted = m_place.any(GridFsPlace::Strays, asItIs());
    if (!isNoted || isNoted.value)
        return isNoted.outcome;
    const auto forgotten = m_place.remove(GridFsPlace::Strays, Bson().id("_id", id));
    return forgotten ? m_place.updateOrInsert(GridFsPlace::Strays, asItIs(), GridFsPulse::seenNow())
                           .outcome
                     : forgotten.outcome;
}

} // namespace KODMS::Services
