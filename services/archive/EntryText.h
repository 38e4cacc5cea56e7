// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/EntryNames.h"

#include <QString>

#include <optional>

struct archive_entry;

namespace KODMS::Services {

/// The entry's name as a text; nothing when it is none in any encoding.
std::optional<QString> entryName(archive_entry *entry, const EntryNames &names);

/// The same of what a hard or symbolic link leads to; empty of any other entry.
std::optional<QString> entryLink(archive_entry *entry, const EntryNames &names);

} // namespace KODMS::Services
