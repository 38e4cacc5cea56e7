// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsPlace.h"

#include "services/filestore/gridfs/GridFsId.h"

#include <QSet>
#include <QStringList>

namespace KODMS::Services {

/// Tells what killed programs left from work in progress, and removes it. Time is the
/// server's, so that clocks of several machines need not agree.
class GridFsSweeper {
public:
    /// Chunks without a file that nobody of ours has begun are strays. They may be a put of
    /// another client; when they have not grown for a day they are a broken one.
    static constexpr qint64 ForeignPutMs = 24 * 60 * 60 * 1000;

    explicit GridFsSweeper(const GridFsPlace &place) : m_place(place) {}

    /// What our programs left. Quick, however many files there are.
    Outcome sweepOurs() const;
    /// What a killed put of this name left; nothing while that put may go on.
    Outcome sweepPut(const QString &name) const;
    /// What our programs left, and strays that an earlier sweep has met a day ago; notes
    /// the others.
    Outcome sweep() const;
    /// What our programs left, strays, and files that are no stored files.
    Result<QStringList> leftovers() const;

private:
    struct Remain {
        QString name;
        GridFsId id;
        qint64 seen = -1;
        bool isBroken = false;
    };

    using Remains = std::vector<Remain>;
    using Ids = std::vector<GridFsId>;

    Result<Remains> remainsIn(GridFsPlace::Part part) const;
    Result<Remains> brokenPuts(qint64 now) const;
    Result<Remains> freeRemoved() const;
    Result<Ids> strays() const;
    Outcome keepStrays(Ids &candidates, Ids &strays) const;
    Outcome sweepStray(const GridFsId &id, qint64 now) const;
    Outcome addIds(GridFsPlace::Part part, const Bson &filter, const char *key,
                   QSet<QString> &known) const;
    Outcome clear(const Remain &put, qint64 now) const;
    Outcome finishRemoval(const Remain &removed, qint64 now) const;

    const GridFsPlace &m_place;
};

} // namespace KODMS::Services
