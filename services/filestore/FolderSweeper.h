// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FolderLayout.h"

#include <QStringList>

namespace KODMS::Services {

/// Tells remains of killed processes from work in progress, and removes them.
class FolderSweeper {
public:
    explicit FolderSweeper(FolderLayout layout) : m_layout(std::move(layout)) {}

    /// Folders of incoming/ whose owner is dead.
    QStringList deadIncoming() const;
    /// Everything in the trash, while no hold lives; else nothing.
    QStringList freeTrash() const;
    /// What is in the place but in none of its known folders, or not a stored file
    /// where only those stand.
    QStringList foreign() const;

    Outcome sweep() const;

private:
    FolderLayout m_layout;
};

} // namespace KODMS::Services
