// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/DeskOperations.h"

#include <QVector>

#include <functional>

class QComboBox;
class QString;
class QTableWidget;
class QWidget;

namespace KODMS::UI {

/// The assign button of a desk: hands the selected rows to the person whom the
/// combo box shows. Made for one click. GUI thread.
class AssignAction {
public:
    /// `assigneeIds` holds the user ids in the order of the combo box.
    AssignAction(QWidget *desk, const DeskOperations &its, const QTableWidget *table,
                 const QComboBox *assignees, const QVector<int> &assigneeIds);

    /// Checks, asks before it takes rows from somebody, and assigns. False when it
    /// was stopped; then nothing was written, and the desk may be gone.
    bool assign() const;

    /// Runs `refill` while `key` holds the text by which the row that is current
    /// now is selected again.
    void refill(QString &key, const std::function<void()> &refill) const;

private:
    bool isStopped() const;
    bool isSelected(int row) const;
    bool isAssigned(int row) const;
    bool takesFromSomebody() const;
    void assignRow(int row, int assigneeId) const;

    QWidget *m_desk;
    const DeskOperations &m_its;
    const QTableWidget *m_table;
    const QComboBox *m_assignees;
    const QVector<int> &m_assigneeIds;
};

} // namespace KODMS::UI
