// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Utf8Locale.h"

namespace KODMS::Services {

// Names come as UTF-16 here, in every locale.
Utf8Locale::Utf8Locale() = default;
Utf8Locale::~Utf8Locale() = default;

} // namespace KODMS::Services
