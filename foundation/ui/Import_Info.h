// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::UI {

/// The job that an import window works on.
struct Import_Info {
    QString jobNamePrefix; ///< first three characters of the job name
    QString jobName;
    QString origJobName;
    QString flowGuid;
    bool isWeb = false; ///< the prefix in lower case is "web"
    QString uuid;       ///< stored name of the job's file
};

} // namespace KODMS::UI
