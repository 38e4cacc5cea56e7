// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace KODMS::UI {

/// The first three characters of a job's name, which are its customer's code.
QString jobNamePrefix(const QString &jobName);

/// Whether the job came by the web: its prefix is "web", in whatever case.
bool isWebJob(const QString &jobName);

} // namespace KODMS::UI
