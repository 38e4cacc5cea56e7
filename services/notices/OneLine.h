// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// False when the text holds a line break or another control character, with which it would
/// end the line that it is shown or logged in, or a forced direction, which would turn the
/// line round. Marks of direction are part of names and do no harm.
bool isOneLine(const QString &text);

/// The text with a question mark for each of those characters.
QString oneLine(const QString &text);

} // namespace KODMS::Services
