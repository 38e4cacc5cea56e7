// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"

#include <atomic>

namespace KODMS::Services {

/// What a worker thread reports to and the dialog reads. Any thread.
class TaskProgress final : public Progress {
public:
    void setUnit(Unit unit) override;
    void setTotal(qint64 bytes) override;
    void advance(qint64 bytes) override;
    bool isCancelled() const override;

    void cancel();
    Unit unit() const;
    qint64 total() const;
    qint64 done() const;

private:
    std::atomic<Unit> m_unit{Unit::Bytes};
    std::atomic<qint64> m_total{0};
    std::atomic<qint64> m_done{0};
    std::atomic<bool> m_isCancelled{false};
};

} // namespace KODMS::Services
