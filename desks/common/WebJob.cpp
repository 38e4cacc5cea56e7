// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/WebJob.h"

#include <QString>

namespace KODMS::UI {

namespace {

constexpr int PrefixLength = 3;

} // namespace

QString jobNamePrefix(const QString &jobName)
{
    return jobName.left(PrefixLength);
}

bool isWebJob(const QString &jobName)
{
    return jobNamePrefix(jobName).toLower() == QLatin1String("web");
}

} // namespace KODMS::UI
