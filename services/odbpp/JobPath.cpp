// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/JobPath.h"

#include <QStringList>

namespace KODMS::Services {

namespace {

bool is(const QString &part, const char *name)
{
    return part.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

/// Packed files carry a suffix; how they are packed is told by their content.
bool isFileNamed(const QString &part, const char *name)
{
    for (const char *suffix : {"", ".Z", ".gz"})
        if (part.compare(QString::fromLatin1(name) + QLatin1String(suffix), Qt::CaseInsensitive) ==
            0)
            return true;
    return false;
}

QStringList partsOf(const QString &path)
{
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

QString joined(const QStringList &parts, int count)
{
    return parts.mid(0, count).join(QLatin1Char('/'));
}

} // namespace

std::optional<JobPath> JobPath::of(const QString &path)
{
    const QStringList parts = partsOf(path);
    const int size = parts.size();
    if (size >= 2 && isFileNamed(parts[size - 1], "matrix") && is(parts[size - 2], "matrix"))
        return JobPath{Kind::Matrix, joined(parts, size - 2), {}, {}};
    if (size >= 5 && isFileNamed(parts[size - 1], "features") && is(parts[size - 3], "layers") &&
        is(parts[size - 5], "steps"))
        return JobPath{Kind::Features, joined(parts, size - 5), parts[size - 4], parts[size - 2]};
    return std::nullopt;
}

QVector<StepPath> StepPath::allOf(const QString &path)
{
    QVector<StepPath> steps;
    const QStringList parts = partsOf(path);
    for (int i = 0; i + 2 < parts.size(); ++i)
        if (is(parts[i], "steps"))
            steps.append({joined(parts, i), parts[i + 1]});
    return steps;
}

} // namespace KODMS::Services
