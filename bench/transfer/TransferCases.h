// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/transfer/Material.h"
#include "bench/transfer/RunClock.h"

#include <functional>
#include <vector>

namespace KODMS::Bench {

/// One piece of work, done by us and by the tools that one would type otherwise.
/// Both get an empty folder of their own to work in.
struct TransferCase {
    QString name;
    double goal = 1; ///< the most that ours may take, as a part of theirs
    /// Makes what both need, before anything is timed; returns the files and folders
    /// that they read.
    std::function<QStringList()> prepare;
    std::function<void(const QString &folder)> ours;
    std::function<QString()> theirs; ///< a command line for the shell, run in its folder
    /// A folder of thousands of files stays until the end: the file system hands out
    /// new ones more slowly for minutes after such a removal, and to both.
    bool hasManyFiles = false;
    std::function<double()> serverCpu; ///< see timed()
};

/// `material` outlives them; it makes what a case needs when that is prepared.
std::vector<TransferCase> transferCases(const Material &material, const QString &storeRoot);

} // namespace KODMS::Bench
