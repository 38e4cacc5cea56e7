// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlError.h"

#include <QtGlobal>

#include <optional>

namespace KODMS::Tests {

/// The kind of failure of `action`; nothing when it succeeds. A failure without
/// texts for people and for the log ends the test.
template <typename Action> std::optional<Services::SqlError::Kind> failureOf(Action action)
{
    try {
        action();
        return std::nullopt;
    } catch (const Services::SqlError &error) {
        if (error.userText().isEmpty() || error.logText().isEmpty())
            qFatal("a failure without a text");
        return error.kind();
    }
}

} // namespace KODMS::Tests
