// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>

namespace KODMS::Services {

/// Links inside an archive become copies of the files they lead to, so that
/// nothing is ever written through a link. Paths are EntryPaths.
class LinkPlan {
public:
    struct Copy {
        QString from;
        QString to;
    };

    void addFile(const QString &path);
    /// What was added later counts.
    void addLink(const QString &path, const QString &target);

    /// The copies to make once all files are there. Fails when a link leads to
    /// nothing or to a folder.
    Result<QVector<Copy>> copies() const;

private:
    QString endOf(const QString &link, QHash<QString, QString> &ends) const;

    QSet<QString> m_files;
    QMap<QString, QString> m_links;
};

} // namespace KODMS::Services
