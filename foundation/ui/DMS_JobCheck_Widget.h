// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QWidget>

#include <memory>

namespace KODMS::UI {

/// Raises a question on a job flow, or shows one. A window of its own, kept by
/// the desk that made it and pointed at another record by setting `m_id`.
class KODMS_SERVICES_API DMS_JobCheck_Widget : public QWidget {
    Q_OBJECT

public:
    /// `viewMode` false: create a question on the flow `id`; true: show the
    /// question `id`.
    DMS_JobCheck_Widget(int id, bool viewMode, QWidget *parent);
    ~DMS_JobCheck_Widget() override;

    /// Loads the question `m_id`.
    void getQuestionData();

    /// Shown, also when it is in sight already, the window turns to `m_id` (create)
    /// and comes to the front. When it stays with what is being written for another
    /// record, `m_id` says so.
    void setVisible(bool visible) override;

    int m_id; ///< flow id (create) or question id (view)

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KODMS::UI
