// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Bench {

/// Puts the machine's memory into the same state before every run: full of clean
/// pages, as on a machine that has been at work for a day. On a virtual machine
/// memory that was free for some seconds goes back to the host, and touching it again
/// costs more than anything that is measured here, sometimes, and to whoever is first.
class WarmMemory {
public:
    /// `path` is for a file of holes, as large as the free memory but some room.
    explicit WarmMemory(const QString &path);

    /// Reads the holes, and then the files that the run will read, which are thereby
    /// in memory. Folders stand for all that is in them.
    void prepare(const QStringList &sources) const;

private:
    QString m_path;
};

} // namespace KODMS::Bench
