// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/PathClashes.h"

#include "services/archive/ArchiveLimits.h"
#include "services/archive/EntryPath.h"

#include <QCoreApplication>

namespace KODMS::Services {

Outcome PathClashes::addFile(const QString &path, const QString &original)
{
    const Outcome parents = addParents(path);
    return parents ? note(path, original) : parents;
}

Outcome PathClashes::addFolder(const QString &path)
{
    const Outcome parents = addParents(path);
    return parents ? noteFolder(path) : parents;
}

Outcome PathClashes::addParents(const QString &path)
{
    const int last = path.lastIndexOf(QLatin1Char('/'));
    if (last < 0 || m_folders.contains(path.left(last)))
        return Outcome::success();
    for (int slash = path.indexOf(QLatin1Char('/')); slash > 0;
         slash = path.indexOf(QLatin1Char('/'), slash + 1))
        if (Outcome noted = noteFolder(path.left(slash)); !noted)
            return noted;
    return Outcome::success();
}

Outcome PathClashes::noteFolder(const QString &path)
{
    if (m_folders.contains(path))
        return Outcome::success();
    if (m_folders.size() >= m_mostFolders)
        return tooManyEntries(path, m_mostFolders);
    m_folders.insert(path);
    return note(path, QString());
}

Outcome PathClashes::note(const QString &path, const QString &original)
{
    const QString key = path.normalized(QString::NormalizationForm_C).toCaseFolded();
    const auto known = m_known.constFind(key);
    if (known == m_known.cend()) {
        m_known.insert(key, {path, original});
        return Outcome::success();
    }
    if (known->path == path && known->original == original)
        return Outcome::success();
    return entryRefused(
        path,
        QCoreApplication::translate("KODMS::Services::PathClashes", "与另一条目 %1 冲突")
            .arg(known->path),
        QStringLiteral("clashes with %1").arg(known->path));
}

} // namespace KODMS::Services
