// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Tests {

enum class ServerSignal { Kill, Stop, Continue };

/// To a server that runs on the machine itself; nothing where programs get no signals.
void signalServer(qint64 process, ServerSignal signal);

} // namespace KODMS::Tests
