// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/SystemSetup.h"

namespace KODMS::Console {

/// Files are named in UTF-16 here, which Qt does.
void readAndWriteUtf8() {}

/// New files have the rights of their folder here, and a user's folders are the user's alone.
void keepOthersOut() {}

} // namespace KODMS::Console
