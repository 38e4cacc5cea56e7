// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryText.h"

#include <archive_entry.h>

namespace KODMS::Services {

// Here the library gives the bytes that stand in the archive, or UTF-8 where those are UTF-16.

std::optional<QString> entryName(archive_entry *entry, const EntryNames &names)
{
    const char *bytes = archive_entry_pathname(entry);
    return bytes ? names.decode(bytes) : std::nullopt;
}

std::optional<QString> entryLink(archive_entry *entry, const EntryNames &names)
{
    if (const char *target = archive_entry_hardlink(entry))
        return names.decode(target);
    return names.decode(archive_entry_filetype(entry) == AE_IFLNK ? archive_entry_symlink(entry)
                                                                  : nullptr);
}

} // namespace KODMS::Services
