// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"

#include <QElapsedTimer>
#include <QString>

namespace KODMS::Admin {

/// Shows on standard error how far a long command is, at most five times a second, and
/// only when that is a terminal; passes Ctrl-C on to the work.
class ConsoleProgress final : public Services::Progress {
public:
    /// `what`: "Packing", "Writing the backup"; `unit`: what is counted.
    enum class Unit { Bytes, Items };
    ConsoleProgress(const QString &what, Unit unit);
    ~ConsoleProgress() override;

    /// Another unit begins from zero.
    void setUnit(Services::Progress::Unit unit) override;
    void setTotal(qint64 total) override;
    void advance(qint64 done) override;
    bool isCancelled() const override;

    ConsoleProgress(const ConsoleProgress &) = delete;
    ConsoleProgress &operator=(const ConsoleProgress &) = delete;

private:
    void show() const;
    QString amount(qint64 value) const;

    const QString m_what;
    Unit m_unit;
    const bool m_visible;
    qint64 m_total = 0;
    qint64 m_done = 0;
    QElapsedTimer m_sinceShown;
};

} // namespace KODMS::Admin
