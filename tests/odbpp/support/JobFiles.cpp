// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/odbpp/support/JobFiles.h"

#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"

#include <archive.h>
#include <archive_entry.h>

#include <clocale>

namespace KODMS::Tests {

namespace {

la_ssize_t append(archive *, void *target, const void *bytes, std::size_t size)
{
    static_cast<QByteArray *>(target)->append(static_cast<const char *>(bytes),
                                              static_cast<int>(size));
    return static_cast<la_ssize_t>(size);
}

void must(la_ssize_t result)
{
    if (result < ARCHIVE_OK)
        qFatal("the job's archive cannot be written");
}

void put(archive *writer, const QByteArray &name, const QByteArray &content)
{
#if defined(Q_OS_WIN) // where the library writes as UTF-8 only what the code page can say
    std::setlocale(LC_CTYPE, ".936");
#endif
    archive_entry *entry = archive_entry_new();
    archive_entry_copy_pathname_w(entry, QString::fromUtf8(name).toStdWString().c_str());
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_entry_set_perm(entry, 0644);
    archive_entry_set_size(entry, content.size());
    must(archive_write_header(writer, entry));
    must(archive_write_data(writer, content.constData(), static_cast<std::size_t>(content.size())));
    archive_entry_free(entry);
}

} // namespace

QByteArray compressed(const QByteArray &bytes)
{
    QByteArray result;
    archive *writer = archive_write_new();
    must(archive_write_add_filter_compress(writer));
    must(archive_write_set_format_raw(writer));
    must(archive_write_set_bytes_in_last_block(writer, 1));
    must(archive_write_open(writer, &result, nullptr, append, nullptr));
    put(writer, "raw", bytes);
    must(archive_write_close(writer));
    archive_write_free(writer);
    return result;
}

QByteArray zipOf(const JobFiles &files)
{
    QByteArray result;
    archive *writer = archive_write_new();
    must(archive_write_set_format_zip(writer));
    must(archive_write_set_options(writer, "zip:compression=deflate,zip:hdrcharset=UTF-8"));
    must(archive_write_set_bytes_in_last_block(writer, 1));
    must(archive_write_open(writer, &result, nullptr, append, nullptr));
    for (const auto &file : files)
        put(writer, file.path.toUtf8(), file.content);
    must(archive_write_close(writer));
    archive_write_free(writer);
    return result;
}

QByteArray tarOf(const JobFiles &files)
{
    QVector<RawTarEntry> entries;
    for (const auto &file : files)
        entries.append({file.path.toUtf8(), file.content});
    return rawTar(entries);
}

QByteArray tgzOf(const JobFiles &files)
{
    return gzipped(tarOf(files));
}

JobFiles boardFiles(const QString &name)
{
    Services::SampleJobPlan plan;
    plan.name = name;
    plan.layers = Services::SampleJob::boardLayers(6);
    return Services::SampleJob(plan).files();
}

JobFiles smallJob(const QByteArray &features)
{
    JobFiles files = jobWithMatrix("STEP {\nCOL=1\nNAME=pcb\n}\n"
                                   "LAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=SIGNAL\nNAME=l1\n}\n");
    files.append({QStringLiteral("job/steps/pcb/layers/l1/features"), features});
    return files;
}

JobFiles jobWithMatrix(const QByteArray &matrix)
{
    return {{QStringLiteral("job/matrix/matrix"), matrix},
            {QStringLiteral("job/steps/pcb/stephdr"), "X_DATUM=0\n"}};
}

void writeJob(const QString &folder, const JobFiles &files)
{
    for (const auto &file : files)
        if (!writeFile(folder + QLatin1Char('/') + file.path, file.content))
            qFatal("cannot write %s", qPrintable(file.path));
}

} // namespace KODMS::Tests
