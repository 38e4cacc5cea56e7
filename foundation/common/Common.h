// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/KODMS_Config.h"
#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS {

/// Configuration, GUIDs and the file store. GUI thread.
class KODMS_SERVICES_API Common {
public:
    /// The one instance; never null, never owned by the caller.
    static Common *commonInterface();

    /// The present configuration, by value.
    KODMS_Config getConfig();

    /// A new unique id: 32 lower-case hexadecimal digits.
    std::string getGUID();

    /// Puts one local file into the file store under `storedName`. A second put
    /// under the same name is refused. Returns 0, or -1 when it failed.
    static int MongodbPut(const std::string &database, const std::string &bucket,
                          const std::string &localPath, const std::string &storedName);

    /// Removes one stored file: marks it until the deletion of its record
    /// (Odbpp_JobCompressBll::DelOrigFile) makes the removal final; a mark
    /// without that deletion is undone at the next start. Returns 0, or -1.
    static int MongodbDel(const std::string &database, const std::string &bucket,
                          const std::string &storedName);

    /// Packs a folder into one zip archive and puts it into the file store.
    /// `storedName` receives the stored name without its ".zip". Returns 0, or
    /// -1 when it failed (`storedName` is then empty).
    static int FoldersCompressSave2MongoDb(const std::string &folder, const std::string &stagingDir,
                                           std::string &storedName);

    Common(const Common &) = delete;
    Common &operator=(const Common &) = delete;

private:
    Common() = default;
};

} // namespace KODMS
