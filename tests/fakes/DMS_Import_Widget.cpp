// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::UI {

class DMS_Import_Widget::Private {};

DMS_Import_Widget::DMS_Import_Widget(QWidget *parent) : DMS_Import_Widget(0, parent) {}

DMS_Import_Widget::DMS_Import_Widget(int mode, QWidget *parent) : QWidget(parent, Qt::Window)
{
    auto &services = FakeServices::instance();
    services.record("DMS_Import_Widget::DMS_Import_Widget", mode, parent);
    services.windows.append({QStringLiteral("DMS_Import_Widget"), mode, 0, this, parent});
}

DMS_Import_Widget::~DMS_Import_Widget() = default;

void DMS_Import_Widget::setFlowGuid(const Import_Info &info)
{
    FakeServices::instance().record("DMS_Import_Widget::setFlowGuid", info);
}

} // namespace KODMS::UI
