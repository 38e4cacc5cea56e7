// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tables/support/SmallFiles.h"

namespace KODMS::Tests {

SmallFiles::SmallFiles(qint64) {}

SmallFiles::~SmallFiles() = default;

} // namespace KODMS::Tests
