// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/SampleBanner.h"

#include "services/api/ServiceRuntime.h"

namespace KODMS::Host {

SampleBanner::SampleBanner(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("sampleBanner"));
    setText(tr("示例安装：这里的料号、客户和账号都是虚构的，仅供试用"));
    setAlignment(Qt::AlignCenter);
    setVisible(Services::ServiceRuntime::instance().isSample());
}

} // namespace KODMS::Host
