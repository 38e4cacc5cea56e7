// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsCatalog.h"

#include "services/filestore/StoreFailures.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

/// By name, then as they were put: the order of the index that every client makes.
Bson inOrder()
{
    Bson options;
    options.document("sort", Bson().small("filename", 1).small("uploadDate", 1));
    return options;
}

const GridFsFile &storedOne(const std::vector<GridFsFile> &revisions)
{
    const auto ours = std::find_if(revisions.begin(), revisions.end(),
                                   [](const GridFsFile &file) { return file.isOurs(); });
    return ours == revisions.end() ? revisions.back() : *ours;
}

} // namespace

Result<std::vector<GridFsFile>> GridFsCatalog::revisions(const QString &name) const
{
    Revisions found;
    const Outcome read = m_place.each(GridFsPlace::Files, Bson().text("filename", name), inOrder(),
                                      [&found](const BsonView &document) {
                                          if (auto file = GridFsFile::parse(document))
                                              found.push_back(std::move(*file));
                                          return true;
                                      });
    if (!read)
        return read;
    return found;
}

Result<GridFsFile> GridFsCatalog::find(const QString &name) const
{
    if (!FileStore::isValidStoredName(name))
        return badNameFailure(name);
    const auto found = revisions(name);
    if (!found)
        return found.outcome;
    if (found.value.empty())
        return missingFailure(name);
    return storedOne(found.value);
}

Result<bool> GridFsCatalog::has(const QString &name) const
{
    return m_place.any(GridFsPlace::Files, Bson().text("filename", name));
}

Result<bool> GridFsCatalog::hasId(const GridFsId &id) const
{
    return m_place.any(GridFsPlace::Files, Bson().id("_id", id));
}

Outcome
GridFsCatalog::eachName(const std::function<void(const QString &, const Revisions &)> &take) const
{
    Revisions group;
    const auto flush = [&] {
        if (!group.empty())
            take(group.front().name, group);
        group.clear();
    };
    const Outcome read =
        m_place.each(GridFsPlace::Files, Bson(), inOrder(), [&](const BsonView &document) {
            auto file = GridFsFile::parse(document).value_or(GridFsFile());
            if (!group.empty() && group.front().name != file.name)
                flush();
            group.push_back(std::move(file));
            return true;
        });
    flush();
    return read;
}

Result<QVector<StoredFileInfo>> GridFsCatalog::list() const
{
    QVector<StoredFileInfo> found;
    const Outcome read = eachName([&found](const QString &name, const Revisions &revisions) {
        if (FileStore::isValidStoredName(name))
            found.append(storedOne(revisions).info());
    });
    if (!read)
        return read;
    return found;
}

Result<QStringList> GridFsCatalog::foreign() const
{
    QStringList found;
    const Outcome read = eachName([&found](const QString &name, const Revisions &revisions) {
        const bool isStored = FileStore::isValidStoredName(name);
        for (std::size_t i = isStored ? 1 : 0; i < revisions.size(); ++i)
            found << name;
    });
    if (!read)
        return read;
    return found;
}

} // namespace KODMS::Services
