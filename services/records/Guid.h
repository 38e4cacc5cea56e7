// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// A new unique id: 32 lower-case hexadecimal digits, no braces, no hyphens.
QString newGuid();

/// True for a text of that form.
bool isGuid(const QString &text);

} // namespace KODMS::Services
