// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsFile.h"
#include "services/filestore/gridfs/GridFsPlace.h"

namespace KODMS::Services {

/// Which files there are. Other clients may put several under one name: then ours, the
/// first of them, is the stored file, else the one put last.
class GridFsCatalog {
public:
    explicit GridFsCatalog(const GridFsPlace &place) : m_place(place) {}

    Result<GridFsFile> find(const QString &name) const;
    Result<bool> has(const QString &name) const;
    Result<bool> hasId(const GridFsId &id) const;
    /// Everything under one name, in the order in which it was put.
    Result<std::vector<GridFsFile>> revisions(const QString &name) const;
    Result<QVector<StoredFileInfo>> list() const;
    /// Names of files that are no stored files: by their name, by their document, or
    /// because another one of that name is.
    Result<QStringList> foreign() const;

private:
    using Revisions = std::vector<GridFsFile>;
    Outcome eachName(const std::function<void(const QString &, const Revisions &)> &take) const;

    const GridFsPlace &m_place;
};

} // namespace KODMS::Services
