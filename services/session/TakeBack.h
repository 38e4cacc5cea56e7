// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace KODMS::Services {

class Runtime;

/// Removes a stored file whose recording has failed. The records are asked first: a change
/// whose answer was lost may have been made all the same, or be made this very moment, so on a
/// server this waits for other writers. Nobody waits for the removal itself: the name is new, and
/// once our own lost change has ended, nobody else is there to record it. When the records cannot
/// be asked, or the file cannot be removed, it stays for the next check to find. Throws nothing.
/// GUI thread.
void takeBackUnrecorded(Runtime &runtime, const QString &storedName);

} // namespace KODMS::Services
