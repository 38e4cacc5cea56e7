// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveLimits.h"

#include "services/archive/EntryPath.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

/// Small archives may swell by more than the ratio: a blank form is mostly zeros.
constexpr qint64 FreeBytes = qint64{16} << 20;

struct ArchiveLimitsTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::ArchiveLimits)

public:
    static QString entries(qint64 limit) { return tr("条目超过 %1 个").arg(limit); }

    static QString bytes(qint64 limit) { return tr("解压后超过 %1 字节").arg(limit); }
};

} // namespace

qint64 allowedBytes(qint64 archiveSize, const LimitSettings &limits)
{
    if (archiveSize > limits.archiveBytes / limits.archiveRatio) // the product might overflow
        return limits.archiveBytes;
    return qMin(limits.archiveBytes, qMax(FreeBytes, archiveSize * limits.archiveRatio));
}

Outcome tooManyEntries(const QString &entry, qint64 limit)
{
    return entryRefused(entry, ArchiveLimitsTexts::entries(limit),
                        QStringLiteral("more than %1 entries").arg(limit));
}

Outcome tooManyBytes(const QString &entry, qint64 limit)
{
    return entryRefused(entry, ArchiveLimitsTexts::bytes(limit),
                        QStringLiteral("more than %1 bytes").arg(limit));
}

} // namespace KODMS::Services
