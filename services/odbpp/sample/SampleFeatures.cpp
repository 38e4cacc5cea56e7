// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/sample/SampleFeatures.h"

namespace KODMS::Services {

namespace {

constexpr quint32 Symbols = 8;
constexpr quint32 MicronsPerSide = 500000;

} // namespace

quint32 SampleFeatures::next(quint32 below)
{
    constexpr quint32 factor = 1664525;
    constexpr quint32 summand = 1013904223;
    constexpr quint32 lowBits = 8; // these repeat too soon
    m_state = m_state * factor + summand;
    return (m_state >> lowBits) % below;
}

void SampleFeatures::putCoordinates(int number)
{
    for (int i = 0; i < number; ++i) {
        put(next(6) == 0 ? " -" : " ");
        std::string digits = std::to_string(next(MicronsPerSide));
        digits.insert(0, 6 - digits.size(), '0');
        m_text += digits.insert(2, 1, '.');
    }
}

void SampleFeatures::putSymbol()
{
    m_text += ' ';
    m_text += std::to_string(next(Symbols));
}

void SampleFeatures::putPolarity()
{
    put(next(8) == 0 ? " N" : " P");
}

/// What follows the polarity, and in a third of the records attributes.
void SampleFeatures::endRecord(const char *rest)
{
    put(rest);
    if (next(3) == 0)
        m_text += ";0=1,1;ID=" + std::to_string(next(100000));
    m_text += '\n';
}

void SampleFeatures::putContour(const char *kind)
{
    put("OB");
    putCoordinates(2);
    put(kind);
    for (quint32 corners = 3 + next(4); corners > 0; --corners) {
        const bool isArc = next(4) == 0;
        put(isArc ? "OC" : "OS");
        putCoordinates(isArc ? 4 : 2);
        put(isArc ? " Y\n" : "\n");
    }
    put("OE\n");
}

void SampleFeatures::putSurface()
{
    put("S");
    putPolarity();
    endRecord(" 0");
    putContour(" I\n");
    for (quint32 holes = next(3); holes > 0; --holes)
        putContour(" H\n");
    put("SE\n");
}

void SampleFeatures::putFeature()
{
    const quint32 kind = next(12);
    if (kind == 0)
        return putSurface();
    const bool isPad = kind >= 4 && kind <= 7;
    put(kind == 1 ? "A" : kind == 2 ? "T" : kind == 3 ? "B" : isPad ? "P" : "L");
    putCoordinates(kind == 1 ? 6 : kind == 2 || kind == 3 || isPad ? 2 : 4);
    if (kind == 2)
        put(" standard");
    else if (kind == 3)
        put(" UPC39 standard");
    else if (kind == 4)
        put(" -1");
    if (kind != 2 && kind != 3)
        putSymbol();
    if (kind == 4)
        put(" 1.5");
    putPolarity();
    if (kind == 1)
        endRecord(" 0 Y");
    else if (kind == 2)
        endRecord(" 0 0.05 0.06 0.5 'REV; A # 1' 1");
    else if (kind == 3)
        endRecord(" 0 E 0.01 0.2 N N Y T 'B 12'");
    else
        endRecord(isPad ? " 0 8 45.0" : " 0");
}

void SampleFeatures::putHeader(int count)
{
    put("UNITS=INCH\n#\n#Num Features\n#\nF ");
    m_text += std::to_string(count);
    put("\n\n#\n#Feature symbol names\n#\n");
    for (quint32 i = 0; i < Symbols; ++i)
        m_text += '$' + std::to_string(i) + " r" + std::to_string(5 + i) + '\n';
    put("\n@0 .smd\n@1 .nomenclature\n&0 text of an attribute\n\n#\n#Layer features\n#\n");
}

QByteArray SampleFeatures::text(int count)
{
    m_text.clear();
    putHeader(count);
    for (int i = 0; i < count; ++i)
        putFeature();
    return QByteArray::fromStdString(m_text);
}

} // namespace KODMS::Services
