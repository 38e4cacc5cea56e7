// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desk/HandOverLog.h"

namespace KODMS::Host {

/// Where the files of a hand-over lie.
struct HandOverFolder {
    /// The folder to show, whether it still exists or not: of a file the one that
    /// holds it; empty for a hand-over without a path.
    static QString of(const HandOverLog::HandOver &handOver);

    /// Shows it in the system's file browser; what went wrong as a text for people,
    /// empty when nothing did. Only a folder is ever opened, so that no file that a
    /// customer sent is started.
    static QString open(const HandOverLog::HandOver &handOver);
};

} // namespace KODMS::Host
