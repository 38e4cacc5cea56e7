// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/TimeText.h"

#include <chrono>
#include <ctime>
#include <limits>
#include <utility>

namespace KODMS::Services {

namespace {

/// So long the time zone is taken to be the same: looking costs a look at a file.
constexpr std::chrono::seconds zoneLasts{1};

/// The clock on the wall at that second. A page shows a hundred times, for each of which
/// QDateTime looks at the zone's file several times.
std::tm wallClock(std::time_t second)
{
#ifdef _WIN32
    return *std::localtime(&second); // each thread's own
#else
    thread_local std::chrono::steady_clock::time_point nextLook;
    const auto now = std::chrono::steady_clock::now();
    if (now >= nextLook) {
        tzset();
        nextLook = now + zoneLasts;
    }
    std::tm clock{};
    localtime_r(&second, &clock);
    return clock;
#endif
}

void putDigits(QString &text, int number, int count)
{
    constexpr int base = 10;
    const int start = text.size();
    text.resize(start + count);
    for (int place = start + count - 1; place >= start; --place, number /= base)
        text[place] = QLatin1Char(static_cast<char>('0' + number % base));
}

/// "yyyy-MM-dd HH:mm:ss"
QString wallText(const std::tm &clock)
{
    constexpr int firstYear = 1900;
    QString text;
    text.reserve(20);
    putDigits(text, clock.tm_year + firstYear, 4);
    const std::pair<char, int> rest[] = {{'-', clock.tm_mon + 1},
                                         {'-', clock.tm_mday},
                                         {' ', clock.tm_hour},
                                         {':', clock.tm_min},
                                         {':', clock.tm_sec}};
    for (const auto &[mark, number] : rest) {
        text += QLatin1Char(mark);
        putDigits(text, number, 2);
    }
    return text;
}

} // namespace

QString storedTime(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ"));
}

QString storedNow()
{
    return storedTime(QDateTime::currentDateTimeUtc());
}

QString shownTime(const QString &stored)
{
    if (stored.isEmpty())
        return {};
    const QDateTime time = QDateTime::fromString(stored, Qt::ISODateWithMs);
    if (!time.isValid())
        return stored;
    constexpr int thousand = 1000; // milliseconds
    const qint64 second = time.toMSecsSinceEpoch() / thousand;
    // Not every library knows other times.
    if (time.toMSecsSinceEpoch() < 0 || second > std::numeric_limits<qint32>::max())
        return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return wallText(wallClock(static_cast<std::time_t>(second)));
}

QString storedTimeFrom(const QString &isoText)
{
    QDateTime time = QDateTime::fromString(isoText.trimmed(), Qt::ISODateWithMs);
    if (!time.isValid())
        return {};
    if (time.timeSpec() == Qt::LocalTime)
        time.setTimeSpec(Qt::UTC);
    return storedTime(time);
}

} // namespace KODMS::Services
