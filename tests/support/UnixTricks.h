// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace KODMS::Tests {

/// What tests do that only some systems can. Where this one cannot, a test skips.

/// Runs `work` in a copy of this process, which ends with its result, or within it by
/// endAtOnce(): the copy's exit code. Nothing where processes cannot be copied.
std::optional<int> exitCodeOfCopy(const std::function<int()> &work);

/// As if killed: nothing is cleaned up.
[[noreturn]] void endAtOnce(int code);

/// From within, what a killer does from outside: nothing is cleaned up, and whoever started the
/// process sees it crash.
[[noreturn]] void killThisProcess();

/// Runs `work` while this process can open nothing more: no file, no socket. False, without having
/// run it, where that cannot be had.
bool withoutDescriptors(const std::function<void()> &work);

/// Runs the line in the system's shell, in that folder. False where there is no such shell.
bool runInShell(const QString &folder, const QString &line);

/// False where a link cannot be made, or is none to the system.
bool makeLink(const QString &target, const QString &path);

/// False where a folder cannot hold a pipe.
bool makePipe(const QString &path);

} // namespace KODMS::Tests
