// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Services {

/// What long work reports to, and where it learns that it was cancelled.
/// The worker calls it from its own thread, about once a mebibyte.
class Progress {
public:
    virtual ~Progress() = default;

    /// What the numbers count, bytes unless said before them.
    enum class Unit { Bytes, Rows };

    virtual void setUnit(Unit) {}

    /// Bytes (or rows) in all; 0 = not known.
    virtual void setTotal(qint64 bytes) = 0;
    /// Bytes (or rows) done since the last call.
    virtual void advance(qint64 bytes) = 0;
    /// True when the person at the screen has pressed cancel: the work stops,
    /// leaves nothing behind and reports failure.
    virtual bool isCancelled() const = 0;
};

/// For callers without a screen.
class NoProgress final : public Progress {
public:
    void setTotal(qint64) override {}

    void advance(qint64) override {}

    bool isCancelled() const override { return false; }
};

} // namespace KODMS::Services
