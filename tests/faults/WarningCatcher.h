// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Tests {

/// Keeps the warnings that are logged while it lives, from any thread, instead of letting
/// the test library see them. One at a time.
class WarningCatcher {
public:
    WarningCatcher();
    ~WarningCatcher();
    WarningCatcher(const WarningCatcher &) = delete;
    WarningCatcher &operator=(const WarningCatcher &) = delete;

    QStringList texts() const;
};

} // namespace KODMS::Tests
