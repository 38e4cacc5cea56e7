// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// Where things stand in a folder store:
///   ROOT/DATABASE/BUCKET/files/3f2/NAME/SHA256-SIZE-OWNER  a stored file
///                        incoming/OWNER/SLOT/...           being written by OWNER
///                        trash/NAME@ID/...                 removed, perhaps still held
///                        live/KIND-ID                      locks of owners and holds
/// The three digits are the head of the name's SHA-256: 4,096 folders, so that a
/// million files are some 250 a folder.
class FolderLayout {
public:
    FolderLayout(const QString &root, const QString &database, const QString &bucket);

    const QString &place() const { return m_place; }

    QString files() const { return m_place + QStringLiteral("/files"); }

    QString incoming() const { return m_place + QStringLiteral("/incoming"); }

    QString trash() const { return m_place + QStringLiteral("/trash"); }

    QString live() const { return m_place + QStringLiteral("/live"); }

    QString fan(const QString &name) const;
    QString entry(const QString &name) const;
    QString ownerLock(const QString &owner) const;
    QString holdLock(const QString &hold) const;
    static QString holdPrefix();

    /// A name that nobody else chooses.
    static QString newId();

private:
    QString m_place;
};

/// Nobody holds the store: what is in the trash may go.
bool hasLiveHold(const FolderLayout &layout);

} // namespace KODMS::Services
