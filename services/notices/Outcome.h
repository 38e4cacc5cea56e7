// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <utility>

namespace KODMS::Services {

/// How an operation that can fail ended. `text` is for people, translated; it is
/// empty on success. `cause` is for the log, English; where the text says it all,
/// it may be empty. What a person has cancelled has not succeeded, but nobody needs
/// to be told that it failed.
struct [[nodiscard]] Outcome {
    bool ok = true;
    QString text;
    QString cause = {};
    bool isCancelled = false;

    static Outcome success() { return {}; }

    static Outcome failure(const QString &text, const QString &cause = {})
    {
        return {false, text, cause};
    }

    explicit operator bool() const { return ok; }
};

/// An Outcome with a value, which is meaningful only on success.
template <typename T> struct [[nodiscard]] Result {
    Outcome outcome;
    T value{};

    Result(T v) : value(std::move(v)) {}

    Result(Outcome failed) : outcome(std::move(failed)) {}

    explicit operator bool() const { return outcome.ok; }

    const QString &text() const { return outcome.text; }
};

} // namespace KODMS::Services
