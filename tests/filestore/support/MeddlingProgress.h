// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"

#include <functional>
#include <utility>

namespace KODMS::Tests {

/// Runs something once the first piece has been copied; or cancels.
class MeddlingProgress final : public Services::Progress {
public:
    explicit MeddlingProgress(std::function<void()> meddle) : m_meddle(std::move(meddle)) {}

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        if (auto meddle = std::exchange(m_meddle, {}))
            meddle();
    }

    bool isCancelled() const override { return cancelled; }

    bool cancelled = false;

private:
    std::function<void()> m_meddle;
};

} // namespace KODMS::Tests
