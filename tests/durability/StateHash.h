// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"

namespace KODMS::Tests {

/// A hash over every row of every table, those of the change log and the audit
/// included; only the table of these hashes itself is left out.
QByteArray stateHash(Services::Database &database);

/// Makes the table that keeps the hash of each moment, by the last audit event.
void makeStateTable(Services::Database &database);

/// Within the transaction of a change: remembers the state that it leads to.
void rememberState(Services::Database &database);

int lastEvent(Services::Database &database);

/// The remembered hash; empty when there is none for that event.
QByteArray rememberedState(Services::Database &database, int event);

} // namespace KODMS::Tests
