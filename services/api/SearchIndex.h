// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QString>

namespace KODMS::Services {

/// How the search index of the running installation stands.
struct SearchIndexState {
    bool isReady = false; ///< else the database answers the searches itself
    int flows = 0;
    int origFiles = 0;
    qint64 bytes = 0;
    double milliseconds = 0; ///< what the last reading of all records took
    QString text;            ///< the same for people, translated
};

/// The searched fields of all records, kept in memory. GUI thread.
class KODMS_SERVICES_API SearchIndex {
public:
    static SearchIndexState state();

    /// Reads it, unless it is there, and waits for it: seconds for a million flows.
    static SearchIndexState load();
};

} // namespace KODMS::Services
