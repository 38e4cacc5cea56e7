// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>

namespace KODMS::Services {

/// What the directory at the end of a zip file says: how many entries there are,
/// which a reader that follows offsets may not notice, and which names do not say
/// that they are UTF-8.
struct ZipDirectory {
    quint64 count = 0;
    bool isEmpty = false;   ///< there is nothing but the directory's end
    bool isTooLong = false; ///< more entries than asked for; nothing else is told
    QSet<QByteArray> unmarkedNames;

    /// Nothing when there is no whole directory.
    static std::optional<ZipDirectory> read(const QString &path, qint64 maxEntries);
};

} // namespace KODMS::Services
