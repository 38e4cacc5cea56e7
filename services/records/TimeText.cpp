// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/TimeText.h"

namespace KODMS::Services {

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
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
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
