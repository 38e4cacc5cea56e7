// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/XlsxFile.h"

#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/tables/CellText.h"
#include "services/tables/XlsxProof.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <utility>
#include <xlsxwriter.h>

namespace KODMS::Services {

namespace {

constexpr int LongestNumber = 15; // digits that a spreadsheet keeps

QString tr(const char *text)
{
    return QCoreApplication::translate("XlsxFile", text);
}

bool isPlainNumber(const QString &text)
{
    bool isNumber = false;
    const qlonglong value = text.toLongLong(&isNumber);
    return isNumber && text.size() <= LongestNumber && QString::number(value) == text;
}

/// The library's word for what the system told it.
Outcome bookFailure(const QString &path, lxw_error error)
{
    const QString cause =
        QStringLiteral("write %1: %2").arg(path, QString::fromUtf8(lxw_strerror(error)));
    return Outcome::failure(tr("无法写完文件（磁盘空间可能不足）：%1").arg(path), cause);
}

} // namespace

/// The library's objects, given back in every case.
struct XlsxFile::Book {
    ~Book()
    {
        if (!workbook)
            return;
        // Leaving a workbook unwritten leaves its waiting rows open.
        if (sheet && sheet->optimize_tmpfile)
            std::fclose(sheet->optimize_tmpfile);
        lxw_workbook_free(workbook);
    }

    Book() = default;
    Book(const Book &) = delete;
    Book &operator=(const Book &) = delete;

    QByteArray file;
    QByteArray folder;
    lxw_workbook *workbook = nullptr;
    lxw_worksheet *sheet = nullptr;
};

XlsxFile::XlsxFile(FileHandle &file)
    : m_path(file.path()), m_place(file), m_book(std::make_unique<Book>())
{
}

XlsxFile::~XlsxFile() = default;

Outcome XlsxFile::begin(const QVector<TableColumn> &columns)
{
    m_columns = columns;
    m_book->file = libraryPath(m_place.path());
    m_book->folder = libraryPath(QFileInfo(m_place.path()).path());
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = m_book->folder.data();
    m_book->workbook = workbook_new_opt(m_book->file.constData(), &options);
    if (m_book->workbook)
        m_book->sheet = workbook_add_worksheet(m_book->workbook, nullptr);
    if (!m_book->sheet || !m_book->sheet->optimize_tmpfile)
        return ioFailure("create", m_path, errno);
    lxw_format *title = workbook_add_format(m_book->workbook);
    format_set_bold(title);
    for (int i = 0; i < columns.size(); ++i) {
        const auto at = static_cast<lxw_col_t>(i);
        if (columns.at(i).width > 0)
            worksheet_set_column(m_book->sheet, at, at, columns.at(i).width, nullptr);
    }
    worksheet_freeze_panes(m_book->sheet, 1, 0);
    for (int i = 0; i < columns.size(); ++i)
        worksheet_write_string(m_book->sheet, 0, static_cast<lxw_col_t>(i),
                               columns.at(i).title.toUtf8().constData(), title);
    m_rows = 1;
    m_filledRows = 1;
    return Outcome::success();
}

Outcome XlsxFile::addRow(const QStringList &cells)
{
    if (m_rows > MostRows)
        return Outcome::failure(tr("工作表只能容纳 %1 行").arg(MostRows),
                                QStringLiteral("too many rows for a sheet"));
    bool isFilled = false;
    for (int i = 0; i < cells.size() && i < m_columns.size(); ++i) {
        if (cells.at(i).isEmpty())
            continue;
        isFilled = true;
        if (Outcome written = writeCell(i, cells.at(i)); !written)
            return written;
    }
    ++m_rows;
    m_filledRows += isFilled ? 1 : 0;
    return Outcome::success();
}

Outcome XlsxFile::writeCell(int column, const QString &text)
{
    const auto row = static_cast<lxw_row_t>(m_rows);
    const auto at = static_cast<lxw_col_t>(column);
    lxw_error error = LXW_NO_ERROR;
    if (m_columns.at(column).isNumber && isPlainNumber(text)) {
        error = worksheet_write_number(m_book->sheet, row, at, double(text.toLongLong()), nullptr);
    } else {
        bool isCut = false;
        const QByteArray cell = sheetCell(text, &isCut).toUtf8();
        m_cutCells += isCut ? 1 : 0;
        error = worksheet_write_string(m_book->sheet, row, at, cell.constData(), nullptr);
    }
    return error == LXW_NO_ERROR ? Outcome::success() : bookFailure(m_path, error);
}

Outcome XlsxFile::finish()
{
    const lxw_error error = workbook_close(std::exchange(m_book->workbook, nullptr));
    if (error != LXW_NO_ERROR)
        return bookFailure(m_path, error);
    if (Outcome delivered = m_place.deliver(); !delivered)
        return delivered;
    return proveSheet(m_path, m_filledRows);
}

} // namespace KODMS::Services
