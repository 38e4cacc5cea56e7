// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"

#include <QString>

#include <optional>

namespace KODMS::Services {

/// A condition list, understood.
struct SearchRequest {
    struct Page {
        qint64 offset = 0;
        qint64 size = 0;
    };

    Condition where;
    const ViewField *orderBy = nullptr; ///< null: by id, ascending
    bool isDescending = false;          ///< also for the ids that break ties
    std::optional<Page> page;           ///< none: every row
};

} // namespace KODMS::Services
