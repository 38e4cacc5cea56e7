// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/XlsxProof.h"

#include "services/disk/OpenArchive.h"

#include <QByteArray>
#include <QCoreApplication>

#include <archive.h>
#include <archive_entry.h>
#include <memory>

namespace KODMS::Services {

namespace {

constexpr std::size_t BlockSize = 1 << 16;

struct ReadFree {
    void operator()(archive *reader) const { archive_read_free(reader); }
};

using Reader = std::unique_ptr<archive, ReadFree>;

Outcome damaged(const QString &path, const QString &cause)
{
    return Outcome::failure(
        QCoreApplication::translate("XlsxFile", "无法写完文件（磁盘空间可能不足）：%1").arg(path),
        QStringLiteral("%1: %2").arg(path, cause));
}

/// Counts the rows of a sheet that comes in pieces.
class RowCount {
public:
    void add(const char *data, std::size_t size)
    {
        static const QByteArray row = QByteArrayLiteral("<row ");
        const QByteArray piece = QByteArray::fromRawData(data, static_cast<int>(size));
        m_text += piece;
        m_rows += m_text.count(row);
        m_end += piece.right(EndSize);
        m_end = m_end.right(EndSize);
        // Too short to hold the mark once more.
        m_text = m_text.right(row.size() - 1);
    }

    int rows() const { return m_rows; }

    bool isWhole() const { return m_end.trimmed().endsWith("</worksheet>"); }

private:
    static constexpr int EndSize = 16;

    QByteArray m_text;
    QByteArray m_end;
    int m_rows = 0;
};

/// Empty, or what is wrong with the entry at which the reader stands.
QString readEntry(archive *reader, RowCount *count)
{
    const void *data = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    int result = ARCHIVE_OK;
    while ((result = archive_read_data_block(reader, &data, &size, &offset)) == ARCHIVE_OK) {
        if (count)
            count->add(static_cast<const char *>(data), size);
    }
    return result == ARCHIVE_EOF ? QString() : QString::fromUtf8(archive_error_string(reader));
}

} // namespace

Outcome proveSheet(const QString &path, int rows)
{
    const Reader reader(archive_read_new());
    archive_read_support_format_zip_seekable(reader.get());
    if (openArchive(reader.get(), path, BlockSize) != ARCHIVE_OK)
        return damaged(path, QString::fromUtf8(archive_error_string(reader.get())));
    RowCount count;
    archive_entry *entry = nullptr;
    int result = ARCHIVE_OK;
    while ((result = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK) {
        const bool isSheet =
            QByteArray(archive_entry_pathname(entry)) == "xl/worksheets/sheet1.xml";
        const QString wrong = readEntry(reader.get(), isSheet ? &count : nullptr);
        if (!wrong.isEmpty())
            return damaged(path, wrong);
    }
    if (result != ARCHIVE_EOF)
        return damaged(path, QString::fromUtf8(archive_error_string(reader.get())));
    if (!count.isWhole() || count.rows() != rows)
        return damaged(path, QStringLiteral("%1 of %2 rows are in it").arg(count.rows()).arg(rows));
    return Outcome::success();
}

} // namespace KODMS::Services
