// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/FeatureReader.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

/// "UNITS=MM" and the like, which say something of the whole file.
bool isSetting(std::string_view word)
{
    const std::size_t equals = word.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return false;
    return std::all_of(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(equals),
                       [](char c) { return (c >= 'A' && c <= 'Z') || c == '_'; });
}

} // namespace

bool FeatureReader::line(std::string_view text)
{
    // Comments; tables of symbols, attribute names and attribute texts.
    if (text.empty() || std::string_view("#$@&").find(text.front()) != std::string_view::npos)
        return true;
    RecordFields fields(text);
    const std::string_view name = fields.next();
    if (m_place != Place::Outside)
        return surfaceRecord(name, fields);
    if (name.size() == 1 && std::string_view("LPATBS").find(name.front()) != std::string_view::npos)
        return feature(name.front(), fields);
    return header(name, fields);
}

bool FeatureReader::header(std::string_view name, RecordFields &fields)
{
    if (name == "F")
        return declaredCount(fields);
    return name == "U" || isSetting(name) || unknown(name);
}

bool FeatureReader::declaredCount(RecordFields &fields)
{
    int declared = 0;
    if (!integer(fields, 0, declared))
        return false;
    m_declared = declared;
    return true;
}

bool FeatureReader::feature(char kind, RecordFields &fields)
{
    ++m_count;
    switch (kind) {
    case 'L':
        return coordinates(fields, 4) && symbol(fields) && polarity(fields);
    case 'A':
        return coordinates(fields, 6) && symbol(fields) && polarity(fields);
    case 'P':
        return pad(fields);
    case 'T':
        return coordinates(fields, 2) && text(fields) && polarity(fields);
    case 'B':
        return coordinates(fields, 2) && text(fields) && text(fields) && polarity(fields);
    default:
        m_place = Place::InSurface;
        return polarity(fields);
    }
}

/// A pad may give its symbol another size: -1, the symbol, the factor.
bool FeatureReader::pad(RecordFields &fields)
{
    int aperture = 0;
    if (!coordinates(fields, 2) || !integer(fields, -1, aperture))
        return false;
    if (aperture == -1 && (!symbol(fields) || !coordinates(fields, 1)))
        return false;
    return polarity(fields);
}

bool FeatureReader::surfaceRecord(std::string_view name, RecordFields &fields)
{
    if (m_place == Place::InSurface) {
        if (name == "OB")
            return beginContour(fields);
        if (name != "SE")
            return refuse(tr("曲面中不能有记录 %1").arg(odbQuoted(name)),
                          QStringLiteral("in a surface: ") + odbQuoted(name));
        m_place = Place::Outside;
        return true;
    }
    if (name == "OS")
        return coordinates(fields, 2);
    if (name == "OC")
        return coordinates(fields, 4) && oneOf(fields, "YN");
    if (name != "OE")
        return refuse(tr("轮廓中不能有记录 %1").arg(odbQuoted(name)),
                      QStringLiteral("in a contour: ") + odbQuoted(name));
    m_place = Place::InSurface;
    return true;
}

bool FeatureReader::beginContour(RecordFields &fields)
{
    m_place = Place::InContour;
    return coordinates(fields, 2) && oneOf(fields, "IH");
}

bool FeatureReader::coordinates(RecordFields &fields, int number)
{
    for (int i = 0; i < number; ++i) {
        const std::string_view field = fields.next();
        const FieldFault fault = checkCoordinate(field);
        if (fault != FieldFault::None)
            return badField(fault, field);
    }
    return true;
}

bool FeatureReader::integer(RecordFields &fields, int smallest, int &value)
{
    const std::string_view field = fields.next();
    FieldFault fault = checkInteger(field, value);
    if (fault == FieldFault::None && value < smallest)
        fault = FieldFault::OutOfRange;
    return fault == FieldFault::None || badField(fault, field);
}

bool FeatureReader::symbol(RecordFields &fields)
{
    int number = 0;
    return integer(fields, 0, number);
}

bool FeatureReader::polarity(RecordFields &fields)
{
    const std::string_view field = fields.next();
    return field == "P" || field == "N" ||
           refuse(tr("极性须为 P 或 N：%1").arg(odbQuoted(field)),
                  QStringLiteral("no polarity: ") + odbQuoted(field));
}

bool FeatureReader::text(RecordFields &fields)
{
    return !fields.next().empty() ||
           refuse(tr("记录缺少字段"), QStringLiteral("a field is missing"));
}

bool FeatureReader::oneOf(RecordFields &fields, std::string_view letters)
{
    const std::string_view field = fields.next();
    return (field.size() == 1 && letters.find(field.front()) != std::string_view::npos) ||
           refuse(tr("字段无效：%1").arg(odbQuoted(field)),
                  QStringLiteral("a bad field: ") + odbQuoted(field));
}

bool FeatureReader::badField(FieldFault fault, std::string_view field)
{
    if (field.empty())
        return refuse(tr("记录缺少字段"), QStringLiteral("a field is missing"));
    if (fault == FieldFault::OutOfRange)
        return refuse(tr("数值超出范围：%1").arg(odbQuoted(field)),
                      QStringLiteral("out of range: ") + odbQuoted(field));
    return refuse(tr("不是数值：%1").arg(odbQuoted(field)),
                  QStringLiteral("not a number: ") + odbQuoted(field));
}

bool FeatureReader::unknown(std::string_view name)
{
    return refuse(tr("无法识别的记录：%1").arg(odbQuoted(name)),
                  QStringLiteral("no known record: ") + odbQuoted(name));
}

bool FeatureReader::end()
{
    if (m_place != Place::Outside)
        return refuse(tr("文件不完整，曲面没有结束"), QStringLiteral("ends within a surface"));
    if (m_declared >= 0 && m_declared != m_count)
        return refuse(
            tr("文件声明 %1 个特征，实际为 %2 个").arg(m_declared).arg(m_count),
            QStringLiteral("%1 features declared, %2 found").arg(m_declared).arg(m_count));
    return true;
}

} // namespace KODMS::Services
