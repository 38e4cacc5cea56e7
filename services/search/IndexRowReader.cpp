// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexRowReader.h"

#include "services/search/IndexTime.h"
#include "services/search/IndexUnfit.h"

namespace KODMS::Services {

IndexRowReader::IndexRowReader(const IndexLayout &layout, const SqlQuery &query)
    : m_layout(layout), m_query(query), m_id(query.placeOf("row_id")),
      m_time(query.placeOf("row_time"))
{
    for (const IndexLayout::NumberColumn &column : layout.numbers)
        m_numbers.push_back(query.placeOf(column.name));
    for (const char *column : layout.texts)
        m_texts.push_back(query.placeOf(column));
}

std::optional<std::string> IndexRowReader::textOf(const QVariant &value)
{
    const QString text = value.toString();
    const bool isText = value.type() == QVariant::String && !value.isNull();
    if (!isText || text.contains(QChar(0)) || !text.isValidUtf16())
        return std::nullopt;
    return text.toStdString();
}

std::string IndexRowReader::textAt(int place, PackedColumn::Number row, const char *column) const
{
    auto text = textOf(m_query.valueAt(place));
    if (!text)
        throw IndexUnfit(m_layout.table, row, column, "a text that is none");
    return std::move(*text);
}

PackedColumn::Number IndexRowReader::numberAt(int place, PackedColumn::Number row,
                                              const char *column) const
{
    const QVariant value = m_query.valueAt(place);
    if (value.isNull())
        return PackedColumn::none;
    bool ok = value.type() == QVariant::LongLong || value.type() == QVariant::Int;
    const qint64 number = ok ? value.toLongLong(&ok) : 0;
    if (!ok || number == PackedColumn::none)
        throw IndexUnfit(m_layout.table, row, column, "a number that is none");
    return number;
}

IndexRow IndexRowReader::read(IndexDictionaries &dictionaries) const
{
    IndexRow row;
    row.id = numberAt(m_id, 0, "id");
    const auto time = IndexTime::numberOf(textAt(m_time, row.id, "create_time"));
    if (!time)
        throw IndexUnfit(m_layout.table, row.id, "create_time", "a time that is none");
    row.time = *time;
    row.numbers.reserve(m_numbers.size());
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        const IndexLayout::NumberColumn &column = m_layout.numbers[i];
        PackedColumn::Number number = numberAt(m_numbers[i], row.id, column.name);
        if (column.records != IndexDictionaries::Kind::None && number != PackedColumn::none)
            number = dictionaries.of(column.records).placeOf(number);
        row.numbers.push_back(number);
    }
    row.texts.reserve(m_texts.size());
    for (std::size_t i = 0; i < m_texts.size(); ++i)
        row.texts.push_back(textAt(m_texts[i], row.id, m_layout.texts[i]));
    return row;
}

} // namespace KODMS::Services
