// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/SampleArchive.h"

#include "services/archive/Utf8Locale.h"
#include "services/disk/OpenArchive.h"
#include "services/records/sample/SampleWords.h"

#include <QCoreApplication>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace KODMS::Services {

namespace {

using Archive = std::unique_ptr<archive, int (*)(archive *)>;

bool addFile(archive *target, const QString &name, const QByteArray &content)
{
    const std::unique_ptr<archive_entry, void (*)(archive_entry *)> entry(archive_entry_new(),
                                                                          &archive_entry_free);
    archive_entry_copy_pathname_w(entry.get(), name.toStdWString().c_str());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_size(entry.get(), content.size());
    const auto size = static_cast<std::size_t>(content.size());
    return archive_write_header(target, entry.get()) == ARCHIVE_OK &&
           archive_write_data(target, content.constData(), size) == content.size();
}

bool open(archive *target, const QString &path)
{
    const bool isZip = path.endsWith(QLatin1String(".zip"));
    const int format = isZip ? archive_write_set_format_zip(target)
                             : archive_write_set_format_pax_restricted(target);
    if (format != ARCHIVE_OK)
        return false;
    if (isZip)
        archive_write_set_options(target, "hdrcharset=UTF-8");
    else
        archive_write_add_filter_gzip(target);
    return createArchive(target, path) == ARCHIVE_OK;
}

QByteArray drill()
{
    return QByteArrayLiteral("M48\nMETRIC,TZ\nT1C0.300\n%\nT1\nX10000Y10000\nX20000Y10000\nM30\n");
}

/// One trace, in the format that board layers are exchanged in.
QByteArray layer(int number)
{
    return QByteArrayLiteral("%FSLAX24Y24*%\n%MOMM*%\n%ADD10C,0.2000*%\nD10*\nX0Y0D02*\nX") +
           QByteArray::number(number * 10000) + QByteArrayLiteral("Y20000D01*\nM02*\n");
}

bool addLayers(archive *target, const QString &folder)
{
    const char *const names[] = {"top.gbr", "bottom.gbr", "outline.gbr"};
    int number = 0;
    return std::all_of(std::begin(names), std::end(names), [&](const char *name) {
        return addFile(target, folder + QLatin1String(name), layer(++number));
    });
}

} // namespace

Outcome SampleArchive::write(const QString &path, const QString &jobName)
{
    const Utf8Locale chineseNames(Utf8Locale::Use::Writing);
    const Archive target(archive_write_new(), &archive_write_free);
    const QByteArray note = "Generated sample job " + jobName.toUtf8() + ".\n";
    const QString folder = jobName + QLatin1Char('/');
    const bool ok =
        open(target.get(), path) &&
        addFile(target.get(), folder + QLatin1String("readme.txt"), note) &&
        addFile(target.get(), folder + QLatin1String("drill.drl"), drill()) &&
        (!jobName.endsWith(SampleWords::gerberMark()) || addLayers(target.get(), folder)) &&
        archive_write_close(target.get()) == ARCHIVE_OK;
    if (ok)
        return Outcome::success();
    return Outcome::failure(
        QCoreApplication::translate("SampleArchive", "无法写入示例文件：%1").arg(path));
}

} // namespace KODMS::Services
