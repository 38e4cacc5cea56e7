// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// What a cell may hold whatever the records hold: a replacement character for each
/// control character but tab and line breaks, for halves of characters and for
/// characters that are none.
QString cleanCell(const QString &text);

/// A clean field of a CSV line: quoted where it must be, and with an apostrophe in
/// front where a spreadsheet would take it for a formula.
QString csvField(const QString &text);

/// A clean cell of a spreadsheet, at most as long as one may be; `isCut` says whether
/// it was longer. What looks like an escaped character stays what it looks like.
QString sheetCell(const QString &text, bool *isCut);

} // namespace KODMS::Services
