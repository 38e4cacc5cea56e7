// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/SampleArchives.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <archive.h>
#include <archive_entry.h>
#include <stdexcept>

namespace KODMS::Tests {

namespace {

la_ssize_t append(archive *, void *target, const void *bytes, std::size_t size)
{
    static_cast<QByteArray *>(target)->append(static_cast<const char *>(bytes),
                                              static_cast<int>(size));
    return static_cast<la_ssize_t>(size);
}

void must(int result)
{
    if (result < ARCHIVE_OK)
        throw std::runtime_error("the sample archive cannot be written");
}

void putFile(archive *writer, const QString &name, const QByteArray &content)
{
    archive_entry *entry = archive_entry_new();
    archive_entry_copy_pathname_w(entry, name.toStdWString().c_str());
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_entry_set_perm(entry, 0644);
    archive_entry_set_size(entry, content.size());
    must(archive_write_header(writer, entry));
    must(static_cast<int>(
        archive_write_data(writer, content.constData(), static_cast<std::size_t>(content.size()))));
    archive_entry_free(entry);
}

} // namespace

QByteArray gzipped(const QByteArray &bytes)
{
    QByteArray result;
    archive *writer = archive_write_new();
    must(archive_write_add_filter_gzip(writer));
    must(archive_write_set_format_raw(writer));
    must(archive_write_set_bytes_in_last_block(writer, 1));
    must(archive_write_open(writer, &result, nullptr, append, nullptr));
    putFile(writer, QStringLiteral("raw"), bytes);
    must(archive_write_close(writer));
    archive_write_free(writer);
    return result;
}

QByteArray sevenZip(const QMap<QString, QByteArray> &files)
{
    QByteArray result;
    archive *writer = archive_write_new();
    must(archive_write_set_format_7zip(writer));
    must(archive_write_open(writer, &result, nullptr, append, nullptr));
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        putFile(writer, file.key(), file.value());
    must(archive_write_close(writer));
    archive_write_free(writer);
    return result;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

QMap<QString, QByteArray> treeOf(const QString &folder)
{
    QMap<QString, QByteArray> tree;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = QDir(folder).relativeFilePath(path);
        if (it.fileInfo().isSymLink()) {
            tree[relative] = "->" + it.fileInfo().symLinkTarget().toUtf8();
        } else if (it.fileInfo().isDir()) {
            tree[relative] = "/";
        } else {
            QFile file(path);
            tree[relative] = file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
        }
    }
    return tree;
}

} // namespace KODMS::Tests
