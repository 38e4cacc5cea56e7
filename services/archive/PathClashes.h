// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QHash>
#include <QString>

namespace KODMS::Services {

/// Finds paths of one archive that cannot stand beside each other: two spellings
/// of one name, which Windows takes for the same file, and a name that is a file
/// here and a folder there. A later version of the same file is no clash.
class PathClashes {
public:
    /// `original` is the name before it was mapped to the path.
    Outcome addFile(const QString &path, const QString &original);
    Outcome addFolder(const QString &path);

private:
    struct Known {
        QString path;
        QString original; ///< empty for a folder
    };

    Outcome addParents(const QString &path);
    Outcome note(const QString &path, const QString &original);

    QHash<QString, Known> m_known;
};

} // namespace KODMS::Services
