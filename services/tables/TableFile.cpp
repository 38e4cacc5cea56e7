// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/TableFile.h"

#include "services/disk/Disk.h"
#include "services/disk/FileLock.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/tables/CsvFile.h"
#include "services/tables/XlsxFile.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <utility>

namespace KODMS::Services {

namespace {

const QString Prefix = QStringLiteral(".kodms-list-");
const QString Suffix = QStringLiteral(".part");

void sweepRemains(const QDir &folder)
{
    const QStringList parts = folder.entryList({Prefix + QLatin1Char('*') + Suffix},
                                               QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &part : parts)
        FileLock::isAlive(folder.filePath(part));
}

std::unique_ptr<TableWriter> writerFor(TableFile::Format format, FileHandle &file)
{
    if (format == TableFile::Format::Csv)
        return std::make_unique<CsvFile>(file);
    return std::make_unique<XlsxFile>(file);
}

} // namespace

TableFile::TableFile(QString path, FileHandle file, Format format)
    : m_path(std::move(path)), m_file(std::move(file)), m_writer(writerFor(format, m_file))
{
}

Result<std::shared_ptr<TableFile>> TableFile::create(const QString &path, Format format,
                                                     const QVector<TableColumn> &columns)
{
    const QDir folder = QFileInfo(path).dir();
    if (!folder.exists())
        return ioFailure("create in", folder.path(), ENOENT);
    if (QFileInfo(path).isDir())
        return ioFailure("replace", path, EISDIR);
    sweepRemains(folder);
    const QString name = Prefix + QUuid::createUuid().toString(QUuid::Id128) + Suffix;
    Result<FileHandle> part = FileHandle::createNew(folder.filePath(name));
    if (!part)
        return part.outcome;
    part.value.lock(true);
    const std::shared_ptr<TableFile> file(new TableFile(path, std::move(part.value), format));
    if (Outcome begun = file->m_writer->begin(columns); !begun)
        return begun;
    return file;
}

Outcome TableFile::addRow(const QStringList &cells)
{
    return m_writer->addRow(cells);
}

Outcome TableFile::publish()
{
    if (Outcome finished = m_writer->finish(); !finished)
        return finished;
    if (Outcome synced = m_file.sync(); !synced)
        return synced;
    std::error_code error;
    Disk::rename(fsPath(m_file.path()), fsPath(m_path), error);
    if (error)
        return ioFailure("rename", m_path, error.value());
    // The file has its name: what goes wrong now takes nothing of it away.
    const Outcome closed = m_file.close();
    const Outcome synced = syncFolder(QFileInfo(m_path).path());
    return closed ? synced : closed;
}

TableFile::~TableFile()
{
    if (!m_file.isOpen())
        return;
    std::error_code ignored;
    Disk::remove(fsPath(m_file.path()), ignored);
}

} // namespace KODMS::Services
