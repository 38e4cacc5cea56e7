// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/JobHistory.h"

#include <QString>

namespace KODMS::Host {

/// The audit trail in words for people.
struct HistoryWords {
    static QString who(const Services::HistoryEntry &entry);
    static QString action(const Services::HistoryEntry &entry);
    /// From what to what; of something refused, that it was not done.
    static QString content(const Services::HistoryEntry &entry);
};

} // namespace KODMS::Host
