// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryText.h"

#include <archive_entry.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <memory>
#include <string>

namespace KODMS::Services {

namespace {

/// One text of an entry in the three shapes in which the library hands it out.
struct Shapes {
    const char *(*bytes)(archive_entry *);
    const wchar_t *(*wide)(archive_entry *);
    const char *(*utf8)(archive_entry *);
};

constexpr Shapes Pathname{archive_entry_pathname, archive_entry_pathname_w,
                          archive_entry_pathname_utf8};
constexpr Shapes Hardlink{archive_entry_hardlink, archive_entry_hardlink_w,
                          archive_entry_hardlink_utf8};
constexpr Shapes Symlink{archive_entry_symlink, archive_entry_symlink_w,
                         archive_entry_symlink_utf8};

/// This thread's code page while it lives; locales are one thread's own then (Utf8Locale).
class CodePage {
public:
    explicit CodePage(const char *name) : m_before(std::setlocale(LC_CTYPE, nullptr))
    {
        std::setlocale(LC_CTYPE, name);
    }

    ~CodePage() { std::setlocale(LC_CTYPE, m_before.c_str()); }

    Q_DISABLE_COPY_MOVE(CodePage)

private:
    std::string m_before;
};

/// What a copy of the entry gives in that code page; the library remembers what it has turned.
/// Where it cannot turn it, an errno from before would make it end the program for want of memory.
QByteArray bytesIn(const char *codePage, archive_entry *entry, const Shapes &shapes)
{
    const CodePage here(codePage);
    const std::unique_ptr<archive_entry, void (*)(archive_entry *)> copy(archive_entry_clone(entry),
                                                                         archive_entry_free);
    errno = 0;
    return copy ? QByteArray(shapes.bytes(copy.get())) : QByteArray();
}

bool isAscii(const QByteArray &bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char byte) { return byte >= 0; });
}

/// Here the library turns what it knows to be Unicode into UTF-16 (or keeps it as UTF-8) and leaves
/// other bytes alone, but does not tell which of them stood in the archive: it turns each into the
/// other by the code page when it is asked. Bytes that are the same in two code pages are the
/// archive's own, and are read as on every system.
std::optional<QString> textOf(archive_entry *entry, const Shapes &shapes, const EntryNames &names)
{
    const QByteArray bytes = bytesIn("C", entry, shapes);
    if (!bytes.isNull() && (isAscii(bytes) || bytes == bytesIn(".936", entry, shapes)))
        return names.decode(bytes);
    errno = 0;
    if (const wchar_t *wide = shapes.wide(entry))
        return QString::fromWCharArray(wide);
    if (const char *utf8 = shapes.utf8(entry))
        return names.decode(utf8);
    return std::nullopt;
}

} // namespace

std::optional<QString> entryName(archive_entry *entry, const EntryNames &names)
{
    return textOf(entry, Pathname, names);
}

std::optional<QString> entryLink(archive_entry *entry, const EntryNames &names)
{
    if (archive_entry_filetype(entry) == AE_IFLNK)
        return textOf(entry, Symlink, names);
    const std::unique_ptr<archive_entry, void (*)(archive_entry *)> copy(archive_entry_clone(entry),
                                                                         archive_entry_free);
    errno = 0;
    const bool isLink = copy && (archive_entry_hardlink(copy.get()) != nullptr ||
                                 archive_entry_hardlink_w(copy.get()) != nullptr ||
                                 archive_entry_hardlink_utf8(copy.get()) != nullptr);
    return isLink ? textOf(entry, Hardlink, names) : QString();
}

} // namespace KODMS::Services
