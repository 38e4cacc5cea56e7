// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services::SampleTime {

/// A time as stored, from milliseconds since 1970; the same text as storedTime(),
/// made some ten times as fast, since a million flows have six million times.
QString text(qint64 millisecondsSinceEpoch);

} // namespace KODMS::Services::SampleTime
