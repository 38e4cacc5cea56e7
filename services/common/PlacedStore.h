// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

namespace KODMS::Services {

/// The file store that a caller of the contracts names by database and bucket: the
/// running one, or another place of the same kind.
class PlacedStore {
public:
    static Result<PlacedStore> named(const std::string &database, const std::string &bucket);

    FileStore &store() { return m_owned ? *m_owned : *m_running; }

    /// The one whose files the records name.
    bool isRunningOne() const { return !m_owned; }

private:
    FileStore *m_running = nullptr;
    std::unique_ptr<FileStore> m_owned;
};

} // namespace KODMS::Services
