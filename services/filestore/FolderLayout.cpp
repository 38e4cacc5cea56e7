// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderLayout.h"

#include "services/disk/FileLock.h"
#include "services/disk/Sha256.h"

#include <QDir>
#include <QUuid>

namespace KODMS::Services {

FolderLayout::FolderLayout(const QString &root, const QString &database, const QString &bucket)
    : m_place(QDir::cleanPath(root) + QLatin1Char('/') + database + QLatin1Char('/') + bucket)
{
}

QString FolderLayout::fan(const QString &name) const
{
    const QByteArray digest = Sha256::of(name.toLatin1());
    return files() + QLatin1Char('/') + QString::fromLatin1(digest.left(3));
}

QString FolderLayout::entry(const QString &name) const
{
    return fan(name) + QLatin1Char('/') + name;
}

QString FolderLayout::ownerLock(const QString &owner) const
{
    return live() + QStringLiteral("/owner-") + owner;
}

QString FolderLayout::holdLock(const QString &hold) const
{
    return live() + QLatin1Char('/') + holdPrefix() + hold;
}

QString FolderLayout::holdPrefix()
{
    return QStringLiteral("hold-");
}

QString FolderLayout::newId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

bool hasLiveHold(const FolderLayout &layout)
{
    const QDir live(layout.live());
    const QStringList holds =
        live.entryList({FolderLayout::holdPrefix() + QLatin1Char('*')}, QDir::Files);
    bool held = false;
    for (const QString &hold : holds)
        held = FileLock::isAlive(live.filePath(hold)) || held;
    return held;
}

} // namespace KODMS::Services
