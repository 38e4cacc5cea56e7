// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/LinkPlan.h"

#include "services/archive/EntryPath.h"

#include <QCoreApplication>
#include <QStringList>

namespace KODMS::Services {

void LinkPlan::addFile(const QString &path)
{
    m_files.insert(path);
    m_links.remove(path);
}

void LinkPlan::addLink(const QString &path, const QString &target)
{
    m_links.insert(path, target);
    m_files.remove(path);
}

/// Where a chain of links ends, remembered for each link of it: a hundred thousand of
/// them, each to the next, are a small archive. A circle ends at a link.
QString LinkPlan::endOf(const QString &link, QHash<QString, QString> &ends) const
{
    QStringList way;
    QString at = link;
    while (m_links.contains(at) && !ends.contains(at)) {
        ends.insert(at, at);
        way << at;
        at = m_links.value(at);
    }
    const QString end = ends.value(at, at);
    for (const QString &passed : qAsConst(way))
        ends.insert(passed, end);
    return end;
}

Result<QVector<LinkPlan::Copy>> LinkPlan::copies() const
{
    QVector<Copy> found;
    QHash<QString, QString> ends;
    for (auto link = m_links.cbegin(); link != m_links.cend(); ++link) {
        const QString target = endOf(link.key(), ends);
        if (!m_files.contains(target))
            return entryRefused(link.key(),
                                QCoreApplication::translate("KODMS::Services::LinkPlan",
                                                            "链接不指向压缩包中的文件"),
                                QStringLiteral("link to %1, which is no file").arg(target));
        found.append({target, link.key()});
    }
    return found;
}

} // namespace KODMS::Services
