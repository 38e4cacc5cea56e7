// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/LinkPlan.h"

#include "services/archive/EntryPath.h"

#include <QCoreApplication>

namespace KODMS::Services {

void LinkPlan::addFile(const QString &path)
{
    m_files.insert(path);
    m_links.remove(path);
}

void LinkPlan::addLink(const QString &path, const QString &target)
{
    m_links.insert(path, target);
}

Result<QVector<LinkPlan::Copy>> LinkPlan::copies() const
{
    QVector<Copy> found;
    for (auto link = m_links.cbegin(); link != m_links.cend(); ++link) {
        QString target = link.value();
        for (int hops = 0; m_links.contains(target) && hops < m_links.size(); ++hops)
            target = m_links.value(target);
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
