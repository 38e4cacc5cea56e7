// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/DeskOperations.h"
#include "tests/desks/DownloadDesk.h"

#include <QMessageBox>
#include <QVector>

namespace KODMS::Tests {

/// What the operations of both desks read of a row, whatever column it is in.
struct JobRow {
    int id = 0;
    QString job;  ///< as the table names the job
    QString file; ///< stored file
    QString type; ///< of the file
    QString flow; ///< GUID
    int owner = DownloadUser;
    // Three texts that only the job-flow desk keeps apart from the above: on the
    // original-file desk the flow's GUID and the type serve twice.
    QString origin;
    QString orderFlow;
    QString archive;
};

/// A row of the given type: 3, "board3", "file3", type, "guid3".
JobRow jobRow(int number, const QString &type);

/// One of the two desks with these rows on its page, for tests that hold for both.
/// Unless told otherwise the user may see all files and nothing else.
class OperationDesk {
public:
    OperationDesk(UI::Desk desk, const QVector<JobRow> &rows,
                  std::initializer_list<Right> rights = {Right::TestAdmin});

    QWidget *widget() const { return m_widget.get(); }

    QTableWidget *table() const { return jobTable(*m_widget); }

    /// The widget as its class; null when it is the other desk, or gone.
    UI::DMS_Export_Widget *jobFlow() const;
    UI::DMS_Download_Widget *origFile() const;

    /// Selects the rows `top` to `bottom` as one block, besides what is selected.
    void select(int top, int bottom) const;

    void select(int row) const { select(row, row); }

    /// Makes a row the current one and leaves the selection alone.
    void setCurrent(int row) const;

    /// Presses the download button, or calls its slot when the user has no button.
    void download() const;

    void remove() { m_widget.reset(); }

private:
    const UI::Desk m_desk;
    std::unique_ptr<QWidget> m_widget;
};

/// Both desks as data rows of the column "desk".
void addDeskRows();

} // namespace KODMS::Tests

Q_DECLARE_METATYPE(KODMS::UI::Desk)
Q_DECLARE_METATYPE(KODMS::Fakes::Right)
Q_DECLARE_METATYPE(QMessageBox::StandardButton)
