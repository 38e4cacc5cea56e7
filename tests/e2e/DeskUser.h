// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/export/DMS_Export_Widget.h"

#include <QStringList>

class QTableWidget;

namespace KODMS::Tests {

/// Somebody who sits at a job-flow desk of their own and works with mouse and keys.
class DeskUser {
public:
    enum Column { Id = 0, JobName = 1, PreProcessor = 9, Remark = 12 };

    DeskUser();

    template <typename Control> Control *control(const char *name) const
    {
        return m_desk.findChild<Control *>(QLatin1String(name));
    }

    QTableWidget *table() const;
    QString pageTotal() const;
    QStringList column(int column) const;

    void click(const char *button) const;
    void clickCell(int row, int column) const;
    void clickHeader(int column) const;

    /// Enters text as an input method does: all at once.
    void commit(const char *edit, const QString &text) const;

    /// Opens the cell's editor by a double click, types and presses Return.
    void typeInto(int row, int column, const QString &text) const;

private:
    UI::DMS_Export_Widget m_desk;
};

} // namespace KODMS::Tests
