// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// True when the text has a letter A to Z, upper or lower case.
bool hasLatinLetter(const QString &text);

/// The text with the letters A to Z in lower case, everything else as it stands.
QString foldedLatin(QString text);

} // namespace KODMS::Services
