// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Robot {

/// A small job in the form of an ODB++ job folder: what this robot delivers.
class ResultFolder {
public:
    /// Writes a worked job below `parent` and returns its folder: two layers with a few features.
    static Services::Result<QString> writeJob(const QString &parent, const QString &jobName);

    /// The same for a job that the robot failed on: no layers, and a report that says so.
    static Services::Result<QString> writeFailure(const QString &parent, const QString &jobName);

    /// The job's name as such a folder can bear it: lower case Latin letters, digits, "-_+.",
    /// at most 64.
    static QString entityName(const QString &jobName);
};

} // namespace KODMS::Robot
