// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace KODMS::Services {

/// The CRC-32 of each file in a RAR archive (versions 4 and 5), in the order of the
/// entries: for files that are stored as they are the archive library does not
/// compare it. Empty for other archives.
class RarSums {
public:
    static RarSums read(const QString &path, qint64 maxEntries);

    /// More blocks than an archive of so many entries has; it was not read to its end.
    bool isTooLong() const { return m_isTooLong; }

    /// Of the entry with that number, counted from 1; nothing when it has none.
    std::optional<quint32> of(quint64 entry) const;

private:
    QVector<std::optional<quint32>> m_sums;
    bool m_isTooLong = false;
};

} // namespace KODMS::Services
