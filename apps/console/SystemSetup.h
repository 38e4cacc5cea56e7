// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Console {

/// Names of files and customers are UTF-8 for the C library from now on, whatever the locale
/// of the shell says; a bare container has none at all.
void readAndWriteUtf8();

/// Databases, backups and the files of customers are made for their owner only, from now on.
void keepOthersOut();

} // namespace KODMS::Console
