// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/imports/ReadJob.h"
#include "services/records/bll/ImportChanges.h"

#include <optional>

namespace KODMS::Services {

class Runtime;

/// One import of an ODB++ job into a flow: first the file into the store, then all
/// records in one transaction. What was stored and not recorded is taken back when
/// the object goes. Belongs to the user who was signed in when it was made.
class JobImport {
public:
    /// With running services. `read` is what was shown to the user.
    JobImport(Runtime &runtime, const QString &flowGuid, ImportKind kind, const ReadJob &read);
    ~JobImport();
    JobImport(const JobImport &) = delete;
    JobImport &operator=(const JobImport &) = delete;

    /// Asks before the long part whether the user may. GUI thread.
    Outcome mayBegin() const;

    /// Stores the archive, or packs the folder and stores that. Refuses what is not
    /// what was read. Any thread.
    Outcome store(Progress &progress);

    /// An earlier import of the same bytes, for whichever job; a failure when the records
    /// cannot tell, which has been said. After store(); GUI thread.
    Result<std::optional<EarlierImport>> sameBefore() const;

    /// GUI thread. Nothing is recorded when somebody else acts by now.
    Outcome record();

private:
    Outcome put(const QString &path, Progress &progress);
    Outcome storeArchive(Progress &progress);
    Outcome storeFolder(Progress &progress);
    Outcome packAndPut(const QString &zip, Progress &progress);
    bool isRunning() const;
    void takeBack();

    Runtime *m_runtime;
    QString m_flowGuid;
    ImportKind m_kind;
    ReadJob m_read;
    int m_userId;
    QString m_storedName;
    QByteArray m_sha256;
    bool m_isStored = false;
};

} // namespace KODMS::Services
