// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/CsvFile.h"

#include "services/tables/CellText.h"

namespace KODMS::Services {

namespace {

constexpr int PieceSize = 1 << 16;

} // namespace

Outcome CsvFile::begin(const QVector<TableColumn> &columns)
{
    m_waiting = QByteArrayLiteral("\xef\xbb\xbf");
    QStringList titles;
    for (const TableColumn &column : columns)
        titles << column.title;
    return addRow(titles);
}

Outcome CsvFile::addRow(const QStringList &cells)
{
    QStringList fields;
    fields.reserve(cells.size());
    for (const QString &cell : cells)
        fields << csvField(cell);
    m_waiting += fields.join(QLatin1Char(',')).toUtf8() + "\r\n";
    return m_waiting.size() < PieceSize ? Outcome::success() : writeOut();
}

Outcome CsvFile::finish()
{
    return writeOut();
}

Outcome CsvFile::writeOut()
{
    Outcome written = m_file.write(m_waiting.constData(), m_waiting.size());
    m_waiting.clear();
    return written;
}

} // namespace KODMS::Services
