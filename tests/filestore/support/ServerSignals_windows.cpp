// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/ServerSignals.h"

namespace KODMS::Tests {

void signalServer(qint64, ServerSignal) {}

} // namespace KODMS::Tests
