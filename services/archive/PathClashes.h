// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace KODMS::Services {

/// Finds paths of one archive that cannot stand beside each other: two spellings
/// of one name, which Windows takes for the same file, and a name that is a file
/// here and a folder there. A later version of the same file is no clash.
///
/// The folders are counted too, since a path of many parts brings more of them than
/// the archive has entries: a few megabytes could fill a disk with empty ones.
class PathClashes {
public:
    explicit PathClashes(qint64 mostFolders) : m_mostFolders(mostFolders) {}

    /// `original` is the name before it was mapped to the path.
    Outcome addFile(const QString &path, const QString &original);
    Outcome addFolder(const QString &path);

private:
    struct Known {
        QString path;
        QString original; ///< empty for a folder
    };

    Outcome addParents(const QString &path);
    Outcome noteFolder(const QString &path);
    Outcome note(const QString &path, const QString &original);

    qint64 m_mostFolders;
    QSet<QString> m_folders; ///< each with all its parents
    QHash<QString, Known> m_known;
};

} // namespace KODMS::Services
