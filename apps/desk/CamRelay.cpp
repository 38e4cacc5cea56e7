// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/CamRelay.h"

#include "apps/desk/HandOverLog.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/PlainText.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QDir>

namespace KODMS::Host {

namespace {

/// A path may carry the web robot's parameters after a bar; people need the path.
QString shown(const QString &path)
{
    return plainLine(QDir::toNativeSeparators(path.section(QLatin1Char('|'), 0, 0)));
}

} // namespace

CamRelay::CamRelay(NoticeLog &notices, HandOverLog &handOvers)
    : m_notices(notices), m_handOvers(handOvers)
{
    UI::DMS_UICommon *hub = UI::DMS_UICommon::interface();
    connect(hub, &UI::DMS_UICommon::camImportRequested, this, &CamRelay::importRequested);
    connect(hub, &UI::DMS_UICommon::camInputRequested, this, &CamRelay::inputRequested);
    connect(hub, &UI::DMS_UICommon::camExportRequested, this, &CamRelay::exportRequested);
}

void CamRelay::importRequested(const QString &path, const QString &jobName)
{
    m_handOvers.addImport(path, jobName);
    m_notices.add(0, tr("料号 %1 已备好，供 CAM 导入：%2").arg(plainLine(jobName), shown(path)));
}

void CamRelay::inputRequested(const QString &jobName, const QString &path)
{
    m_handOvers.addInput(jobName, path);
    m_notices.add(0, tr("料号 %1 已备好，供 CAM 读入：%2").arg(plainLine(jobName), shown(path)));
}

void CamRelay::exportRequested(const QString &jobName, int jobId)
{
    m_handOvers.addExport(jobName, jobId);
    m_notices.add(0, tr("请求 CAM 导出料号 %1（编号 %2）").arg(plainLine(jobName)).arg(jobId));
}

} // namespace KODMS::Host
