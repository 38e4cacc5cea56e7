// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"

#include <functional>
#include <utility>

namespace KODMS::Tests {

/// Does something after the first file of a copy, and again after the first rows.
class Interlude final : public Services::Progress {
public:
    explicit Interlude(std::function<void()> what = {}) : m_what(std::move(what)) {}

    void setUnit(Unit) override { m_isDone = false; }

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        m_isCancelled = m_isCancelled || cancels;
        if (!std::exchange(m_isDone, true) && m_what)
            m_what();
    }

    bool isCancelled() const override { return m_isCancelled; }

    bool cancels = false;

private:
    std::function<void()> m_what;
    bool m_isDone = false;
    bool m_isCancelled = false;
};

} // namespace KODMS::Tests
