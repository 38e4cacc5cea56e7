// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_JobCheck_Widget.h"

#include "tests/fakes/FakeServices.h"

#include <QCloseEvent>

using KODMS::Fakes::FakeServices;

namespace KODMS::UI {

class DMS_JobCheck_Widget::Private {};

// A window of its own although it has a parent, as the real one.
DMS_JobCheck_Widget::DMS_JobCheck_Widget(int id, bool viewMode, QWidget *parent)
    : QWidget(parent, Qt::Window), m_id(id)
{
    auto &services = FakeServices::instance();
    services.record("DMS_JobCheck_Widget::DMS_JobCheck_Widget", id, viewMode, parent);
    services.windows.append(
        {QStringLiteral("DMS_JobCheck_Widget"), viewMode ? 1 : 0, id, this, parent});
}

DMS_JobCheck_Widget::~DMS_JobCheck_Widget() = default;

/// The answer is nobody's, but computing it is where the window or its desk may go.
void DMS_JobCheck_Widget::getQuestionData()
{
    FakeServices::instance().answer("DMS_JobCheck_Widget::getQuestionData", m_id);
}

void DMS_JobCheck_Widget::setVisible(bool visible)
{
    FakeServices::instance().record("DMS_JobCheck_Widget::setVisible", visible, m_id);
    QWidget::setVisible(visible);
}

void DMS_JobCheck_Widget::closeEvent(QCloseEvent *event)
{
    FakeServices::instance().record("DMS_JobCheck_Widget::closeEvent", m_id);
    event->accept();
}

} // namespace KODMS::UI
