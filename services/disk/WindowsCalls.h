// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>

namespace KODMS::Services {

/// The absolute path as the system's calls take it at any length: with the prefix that switches
/// off the limit of 260 characters, and with backslashes.
std::wstring windowsPath(const QString &path);

/// The errno value for what the calling thread's last system call said.
int lastErrno();

} // namespace KODMS::Services
