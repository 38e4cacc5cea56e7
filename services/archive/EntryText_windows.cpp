// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryText.h"

#include <archive_entry.h>

#include <algorithm>

namespace KODMS::Services {

namespace {

/// Whether each character stands for one byte.
bool isBytewise(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() <= 0xff; });
}

/// Here the library turns what it knows to be Unicode into UTF-16, and leaves other bytes alone;
/// then it hands out each in the other's shape too, a byte a character (see Utf8Locale), and does
/// not tell which of them stood in the archive. Only a 7z always has UTF-16. Else bytes are read
/// as on every system, unless characters stand there that no byte becomes.
std::optional<QString> textOf(const char *bytes, const wchar_t *wide, ArchiveType type,
                              const EntryNames &names)
{
    const QString text = QString::fromWCharArray(wide ? wide : L"");
    if (bytes && type != ArchiveType::SevenZip && isBytewise(text))
        if (auto decoded = names.decode(bytes))
            return decoded;
    return wide ? std::optional<QString>(text) : std::nullopt;
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
