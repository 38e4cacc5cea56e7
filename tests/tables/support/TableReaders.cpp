// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tables/support/TableReaders.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <archive.h>
#include <archive_entry.h>

namespace KODMS::Tests {

namespace {

constexpr int BlockSize = 1 << 16;

/// One field from `at`; afterwards `at` is at what ended it.
QString readField(const QString &text, int *at, QString *problem)
{
    QString field;
    if (*at < text.size() && text.at(*at) == QLatin1Char('"')) {
        for (++*at; *at < text.size(); ++*at) {
            if (text.at(*at) != QLatin1Char('"')) {
                field += text.at(*at);
            } else if (*at + 1 < text.size() && text.at(*at + 1) == QLatin1Char('"')) {
                field += QLatin1Char('"');
                ++*at;
            } else {
                ++*at;
                return field;
            }
        }
        *problem = QStringLiteral("a quote is not closed");
        return field;
    }
    while (*at < text.size() && text.at(*at) != QLatin1Char(',') &&
           text.at(*at) != QLatin1Char('\r')) {
        if (text.at(*at) == QLatin1Char('"') || text.at(*at) == QLatin1Char('\n'))
            *problem = QStringLiteral("a bare quote or line feed");
        field += text.at((*at)++);
    }
    return field;
}

int columnOf(const QString &reference)
{
    int column = 0;
    for (const QChar c : reference) {
        if (!c.isLetter())
            break;
        column = column * 26 + (c.unicode() - u'A' + 1);
    }
    return column - 1;
}

QString unescaped(QString text)
{
    static const QRegularExpression escape(QStringLiteral("_x([0-9A-Fa-f]{4})_"));
    int from = 0;
    for (auto match = escape.match(text); match.hasMatch(); match = escape.match(text, from)) {
        const QChar c(match.captured(1).toUShort(nullptr, 16));
        text.replace(match.capturedStart(), match.capturedLength(), c);
        from = match.capturedStart() + 1;
    }
    return text;
}

QByteArray entryOf(const QString &path, const QByteArray &wanted, QString *problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = file.errorString();
        return {};
    }
    const QByteArray bytes = file.readAll();
    archive *reader = archive_read_new();
    archive_read_support_format_zip(reader);
    QByteArray found;
    archive_entry *entry = nullptr;
    if (archive_read_open_memory(reader, bytes.constData(),
                                 static_cast<std::size_t>(bytes.size())) != ARCHIVE_OK)
        *problem = QString::fromUtf8(archive_error_string(reader));
    while (problem->isEmpty() && archive_read_next_header(reader, &entry) == ARCHIVE_OK) {
        if (archive_entry_pathname(entry) != wanted)
            continue;
        QByteArray block(BlockSize, '\0');
        for (la_ssize_t got = 0; (got = archive_read_data(reader, block.data(), BlockSize)) > 0;)
            found.append(block.constData(), static_cast<int>(got));
    }
    archive_read_free(reader);
    return found;
}

void readCell(QXmlStreamReader &xml, QStringList *row)
{
    const int column = columnOf(xml.attributes().value(QLatin1String("r")).toString());
    const bool isText = xml.attributes().value(QLatin1String("t")) == QLatin1String("inlineStr");
    const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
    while (row->size() <= column)
        row->append(QString());
    (*row)[column] = isText ? unescaped(text) : QLatin1Char('#') + text;
}

} // namespace

ReadTable readCsv(const QString &path)
{
    ReadTable table;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        table.problem = file.errorString();
        return table;
    }
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("\xef\xbb\xbf"))
        table.problem = QStringLiteral("no mark");
    const QString text = QString::fromUtf8(bytes.mid(3));
    QStringList row;
    for (int at = 0; at < text.size() && table.problem.isEmpty();) {
        row << readField(text, &at, &table.problem);
        if (at < text.size() && text.at(at) == QLatin1Char(',')) {
            ++at;
        } else if (text.mid(at, 2) == QLatin1String("\r\n")) {
            at += 2;
            table.rows << row;
            row.clear();
        } else {
            table.problem = QStringLiteral("no line end at %1").arg(at);
        }
    }
    return table;
}

ReadTable readSheet(const QString &path)
{
    ReadTable table;
    const QByteArray sheet = entryOf(path, "xl/worksheets/sheet1.xml", &table.problem);
    QXmlStreamReader xml(sheet);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("row"))
            table.rows << QStringList();
        else if (xml.name() == QLatin1String("c"))
            readCell(xml, &table.rows.last());
        else if (xml.name() == QLatin1String("pane"))
            table.frozenRows = xml.attributes().value(QLatin1String("ySplit")).toInt();
        else if (xml.name() == QLatin1String("col"))
            table.widths[xml.attributes().value(QLatin1String("min")).toInt() - 1] =
                xml.attributes().value(QLatin1String("width")).toDouble();
    }
    if (xml.hasError() && table.problem.isEmpty())
        table.problem = xml.errorString();
    return table;
}

} // namespace KODMS::Tests
