// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryText.h"

#include <archive_entry.h>

#include <windows.h>

namespace KODMS::Services {

namespace {

/// Whether the system's own code page has every character of the text.
bool fitsCodePage(const wchar_t *text)
{
    BOOL isLossy = FALSE;
    const int size = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text, -1, nullptr, 0,
                                           nullptr, &isLossy);
    return size > 0 && !isLossy;
}

/// Here the library turns what it knows to be Unicode into UTF-16, and leaves other bytes alone;
/// then it hands out each in the other's shape too, through the system's code page, and does not
/// tell which of them stood in the archive. Only a 7z always has UTF-16. Else bytes are read as
/// on every system, unless they cannot have come from the text without a loss.
std::optional<QString> textOf(const char *bytes, const wchar_t *wide, ArchiveType type,
                              const EntryNames &names)
{
    const bool isBytes = bytes && type != ArchiveType::SevenZip && (!wide || fitsCodePage(wide));
    if (isBytes)
        if (auto text = names.decode(bytes))
            return text;
    return wide ? std::optional<QString>(QString::fromWCharArray(wide)) : std::nullopt;
}

} // namespace

std::optional<QString> entryName(archive_entry *entry, ArchiveType type, const EntryNames &names)
{
    return textOf(archive_entry_pathname(entry), archive_entry_pathname_w(entry), type, names);
}

std::optional<QString> entryLink(archive_entry *entry, ArchiveType type, const EntryNames &names)
{
    const wchar_t *hard = archive_entry_hardlink_w(entry);
    if (hard || archive_entry_hardlink(entry))
        return textOf(archive_entry_hardlink(entry), hard, type, names);
    if (archive_entry_filetype(entry) != AE_IFLNK)
        return QString();
    return textOf(archive_entry_symlink(entry), archive_entry_symlink_w(entry), type, names);
}

} // namespace KODMS::Services
