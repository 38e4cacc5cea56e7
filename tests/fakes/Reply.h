// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/fakes/Call.h"

#include <deque>
#include <functional>
#include <utility>

namespace KODMS::Fakes {

/// What an operation answers: first whatever is queued, in order; then what the
/// callback says, if there is one; else the fixed result.
template <typename Result> class Reply {
public:
    using Callback = std::function<Result(const Call &)>;

    Reply() = default;

    explicit Reply(Result fixed) : m_fixed(std::move(fixed)) {}

    /// The answer to every call for which nothing is queued.
    void always(Result result)
    {
        m_fixed = std::move(result);
        m_callback = nullptr;
    }

    /// Computes the answer from the call.
    void compute(Callback callback) { m_callback = std::move(callback); }

    /// The answer to one call, after those already queued.
    void once(Result result) { m_queue.push_back(std::move(result)); }

    Result take(const Call &call)
    {
        if (!m_queue.empty()) {
            Result result = std::move(m_queue.front());
            m_queue.pop_front();
            return result;
        }
        return m_callback ? m_callback(call) : m_fixed;
    }

private:
    Result m_fixed{};
    Callback m_callback;
    std::deque<Result> m_queue;
};

} // namespace KODMS::Fakes
