// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexRowReader.h"

#include "services/search/IndexTime.h"
#include "services/search/IndexUnfit.h"

namespace KODMS::Services {

namespace {

PackedColumn::Number numberOf(const QVariant &value)
{
    if (value.isNull())
        return PackedColumn::none;
    bool ok = value.type() == QVariant::LongLong || value.type() == QVariant::Int;
    const qint64 number = ok ? value.toLongLong(&ok) : 0;
    if (!ok || number == PackedColumn::none)
        throw IndexUnfit("a number that is none");
    return number;
}

} // namespace

IndexRowReader::IndexRowReader(const IndexLayout &layout, const SqlQuery &query)
    : m_layout(layout), m_query(query), m_id(query.placeOf("row_id")),
      m_time(query.placeOf("row_time"))
{
    for (const IndexLayout::NumberColumn &column : layout.numbers)
        m_numbers.push_back(query.placeOf(column.name));
    for (const char *column : layout.texts)
        m_texts.push_back(query.placeOf(column));
}

std::string IndexRowReader::textOf(const QVariant &value)
{
    const QString text = value.toString();
    const bool isText = value.type() == QVariant::String && !value.isNull();
    if (!isText || text.contains(QChar(0)) || !text.isValidUtf16())
        throw IndexUnfit("a text that is none");
    return text.toStdString();
}

IndexRow IndexRowReader::read(IndexDictionaries &dictionaries) const
{
    IndexRow row;
    row.id = numberOf(m_query.valueAt(m_id));
    const auto time = IndexTime::numberOf(textOf(m_query.valueAt(m_time)));
    if (!time)
        throw IndexUnfit("a creation time that is none");
    row.time = *time;
    row.numbers.reserve(m_numbers.size());
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        PackedColumn::Number number = numberOf(m_query.valueAt(m_numbers[i]));
        const auto records = m_layout.numbers[i].records;
        if (records != IndexDictionaries::Kind::None && number != PackedColumn::none)
            number = dictionaries.of(records).placeOf(number);
        row.numbers.push_back(number);
    }
    row.texts.reserve(m_texts.size());
    for (const int place : m_texts)
        row.texts.push_back(textOf(m_query.valueAt(place)));
    return row;
}

} // namespace KODMS::Services
