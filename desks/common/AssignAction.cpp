// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/AssignAction.h"

#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QComboBox>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char NoRight[] = "对不起，你没有该权限！";
constexpr char SelectRow[] = "请选择一行数据";
constexpr char AskReassign[] = "有一个或多个项已经有指派人了！是否对这些项目重新指派？";

} // namespace

AssignAction::AssignAction(QWidget *desk, const DeskOperations &its, const QTableWidget *table,
                           const QComboBox *assignees, const QVector<int> &assigneeIds)
    : m_desk(desk), m_its(its), m_table(table), m_assignees(assignees), m_assigneeIds(assigneeIds)
{
}

/// Which rows are selected is asked once more after the question: a refresh while
/// it stood there has filled the table anew and selected nothing, and nobody was
/// asked about the rows that stand there now.
bool AssignAction::assign() const
{
    if (isStopped())
        return false;
    const int chosen = m_assignees->currentIndex();
    if (chosen < 0 || chosen >= m_assigneeIds.size())
        return false; // there is nobody to choose
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (isSelected(row))
            assignRow(row, m_assigneeIds.at(chosen));
    return true;
}

void AssignAction::refill(QString &key, const std::function<void()> &refill) const
{
    key = cellText(m_table, m_table->currentRow(), m_its.reselectColumn);
    refill();
    key.clear();
}

/// Nothing is asked of this object after a box: the desk may be gone.
bool AssignAction::isStopped() const
{
    if (!m_its.mayAssign()) {
        inform(m_desk, NoRight);
        return true;
    }
    if (m_table->currentRow() == -1) {
        inform(m_desk, SelectRow);
        return true;
    }
    return takesFromSomebody() && !confirm(m_desk, AskReassign, QMessageBox::Yes | QMessageBox::No);
}

bool AssignAction::takesFromSomebody() const
{
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (isSelected(row) && isAssigned(row))
            return true;
    return false;
}

bool AssignAction::isSelected(int row) const
{
    const QTableWidgetItem *item = m_table->item(row, m_its.keyColumn);
    return item && item->isSelected();
}

bool AssignAction::isAssigned(int row) const
{
    return !cellText(m_table, row, m_its.assigneeColumn).isEmpty();
}

void AssignAction::assignRow(int row, int assigneeId) const
{
    const AssignedRow assigned{cellText(m_table, row, m_its.flowColumn).toStdString(),
                               cellText(m_table, row, m_its.fileIdColumn).toInt(),
                               DMS_StdCommon::interface()->getCurrentUser().id, assigneeId};
    (isAssigned(row) ? m_its.reassign : m_its.assign)(assigned);
}

} // namespace KODMS::UI
