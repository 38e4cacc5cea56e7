// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/tables/BookPlace.h"
#include "services/tables/TableWriter.h"

#include <memory>

namespace KODMS::Services {

/// One sheet of an Office Open XML workbook, its titles bold and always in sight. Rows
/// wait in a nameless file beside the workbook, not in memory.
class XlsxFile final : public TableWriter {
public:
    /// Besides the line of titles.
    static constexpr int MostRows = 1048575;

    /// Fills the open file, which must outlive it.
    explicit XlsxFile(FileHandle &file);
    ~XlsxFile() override;

    Outcome begin(const QVector<TableColumn> &columns) override;
    /// Fails for a row too many.
    Outcome addRow(const QStringList &cells) override;
    /// Reads the workbook once through: the library does not notice every full disk.
    Outcome finish() override;

private:
    struct Book;

    Outcome writeCell(int column, const QString &text);

    QString m_path; ///< what is told when something goes wrong
    BookPlace m_place;
    std::unique_ptr<Book> m_book;
    QVector<TableColumn> m_columns;
    int m_rows = 0;       ///< with the titles
    int m_filledRows = 0; ///< those that the file names
};

} // namespace KODMS::Services
