// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileLock.h"
#include "services/filestore/FolderLayout.h"

#include <memory>

namespace KODMS::Services {

/// The part of incoming/ in which one store object writes. A lock file says that
/// its owner lives; both go with the object, or with the next sweep after a kill.
class IncomingFolder {
public:
    static Result<std::unique_ptr<IncomingFolder>> create(const FolderLayout &layout);
    ~IncomingFolder();
    IncomingFolder(const IncomingFolder &) = delete;
    IncomingFolder &operator=(const IncomingFolder &) = delete;

    const QString &owner() const { return m_owner; }

    /// A new empty folder for one stored file in the making.
    Result<QString> newSlot() const;
    static void discardSlot(const QString &slot);

private:
    IncomingFolder(QString owner, QString folder, FileLock lock);

    QString m_owner;
    QString m_folder;
    FileLock m_lock;
};

} // namespace KODMS::Services
