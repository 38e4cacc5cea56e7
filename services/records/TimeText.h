// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

namespace KODMS::Services {

/// Times stand in the records as UTC, ISO 8601 with milliseconds
/// ("2026-11-21T07:43:30.123Z"), so that text order is time order.
QString storedTime(const QDateTime &time);

/// The present time, as stored.
QString storedNow();

/// A stored time for people: local "yyyy-MM-dd HH:mm:ss". Empty stays empty; a
/// text that is no stored time is handed back as it stands.
QString shownTime(const QString &stored);

/// A time that a caller gives (ISO 8601, any offset; without one: UTC), as
/// stored. Empty when it cannot be read.
QString storedTimeFrom(const QString &isoText);

} // namespace KODMS::Services
