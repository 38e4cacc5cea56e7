// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntrySource.h"

#include "services/archive/ArchiveReader.h"
#include "services/archive/ZipCrew.h"

namespace KODMS::Services {

Result<std::unique_ptr<EntrySource>> EntrySource::open(const QString &path, qint64 maxEntries)
{
    auto reader = ArchiveReader::open(path, maxEntries);
    if (!reader)
        return reader.outcome;
    if (ZipCrew::isWorthwhile(*reader.value))
        return std::unique_ptr<EntrySource>(std::make_unique<ZipCrew>(std::move(reader.value)));
    return std::unique_ptr<EntrySource>(std::move(reader.value));
}

} // namespace KODMS::Services
