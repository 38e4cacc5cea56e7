// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"
#include "services/tables/TableWriter.h"

#include <memory>

namespace KODMS::Services {

/// A table in the making, beside the path that it will have: there it appears, in
/// place of what stands there, only when it is whole and on the disk. Given up, it
/// leaves nothing. Remains of killed writers in the same folder are removed on the way.
class TableFile {
public:
    enum class Format { Csv, Xlsx };

    static Result<std::shared_ptr<TableFile>> create(const QString &path, Format format,
                                                     const QVector<TableColumn> &columns);
    ~TableFile();
    TableFile(const TableFile &) = delete;
    TableFile &operator=(const TableFile &) = delete;

    /// One text a column.
    Outcome addRow(const QStringList &cells);
    Outcome publish();

    /// Cells so long that the format holds only their beginning.
    int cutCells() const { return m_writer->cutCells(); }

private:
    TableFile(QString path, FileHandle file, Format format);

    QString m_path;
    FileHandle m_file;
    std::unique_ptr<TableWriter> m_writer;
};

} // namespace KODMS::Services
