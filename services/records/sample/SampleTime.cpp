// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleTime.h"

#include <QDate>

namespace KODMS::Services {

namespace {

void put(QString &text, int place, int digits, int number)
{
    for (int i = place + digits - 1; i >= place; --i, number /= 10)
        text[i] = QLatin1Char(static_cast<char>('0' + number % 10));
}

} // namespace

QString SampleTime::text(qint64 millisecondsSinceEpoch)
{
    constexpr qint64 dayLength = 86400000;
    constexpr qint64 julianDayOf1970 = 2440588;
    const QDate date = QDate::fromJulianDay(julianDayOf1970 + millisecondsSinceEpoch / dayLength);
    const int inDay = static_cast<int>(millisecondsSinceEpoch % dayLength);
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    QString text = QStringLiteral("0000-00-00T00:00:00.000Z");
    put(text, 0, 4, year);
    put(text, 5, 2, month);
    put(text, 8, 2, day);
    put(text, 11, 2, inDay / 3600000);
    put(text, 14, 2, inDay / 60000 % 60);
    put(text, 17, 2, inDay / 1000 % 60);
    put(text, 20, 3, inDay % 1000);
    return text;
}

} // namespace KODMS::Services
