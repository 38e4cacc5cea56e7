// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsPulse.h"
#include "services/filestore/gridfs/GridFsSender.h"

namespace KODMS::Services {

/// One put. A document in BUCKET.kodms.puts, whose key is the name, keeps everybody else
/// from putting that name; then come the chunks; then the file's own document, with all
/// its sums, makes it a stored file; then the first document goes. A sweeper that takes
/// this program for dead marks that document before it removes anything, and the put
/// that finds it so has failed.
class GridFsPut {
public:
    GridFsPut(std::shared_ptr<GridFsServer> server, GridFsPulse &pulse, const QString &name);
    ~GridFsPut();
    GridFsPut(const GridFsPut &) = delete;
    GridFsPut &operator=(const GridFsPut &) = delete;

    Outcome run(const QString &localPath, Progress &progress);

    /// What stands in `state` of a put that goes on, and of one that will never end.
    static QString openState();
    static QString brokenState();

private:
    Outcome refuseTaken() const;
    Outcome reserve();
    Result<bool> tryReserve() const;
    Outcome fill(const QString &localPath, Progress &progress);
    Outcome publish();
    Outcome readBack() const;
    void takeBack(bool isCancelled);

    const std::shared_ptr<GridFsServer> m_server;
    GridFsPulse &m_pulse;
    const GridFsPlace m_place;
    GridFsFile m_file;
    std::shared_ptr<GridFsSender> m_sender;
};

} // namespace KODMS::Services
