// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Progress.h"

#include <QElapsedTimer>
#include <QString>

namespace KODMS::Admin {

/// Shows on standard error how far a long command is: on a terminal in one line that changes at
/// most five times a second, elsewhere (a log, a pipe) by a plain line for each tenth. Passes
/// Ctrl-C on to the work.
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
    void tellTenth();
    int percent() const;
    QString amount(qint64 value) const;

    const QString m_what;
    Unit m_unit;
    const bool m_isTerminal;
    qint64 m_total = 0;
    qint64 m_done = 0;
    int m_toldTenths = 0;
    QElapsedTimer m_sinceShown;
};

} // namespace KODMS::Admin
