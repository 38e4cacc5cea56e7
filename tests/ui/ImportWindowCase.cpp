// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/ImportWindowCase.h"

#include "services/ui/imports/ImportDropArea.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>

namespace KODMS::Tests {

UI::Import_Info ImportWindowCase::info(const QString &flowGuid, const QString &jobName) const
{
    UI::Import_Info result;
    result.jobName = jobName.isEmpty() ? m_home->job.jobName : jobName;
    result.jobNamePrefix = result.jobName.left(3);
    result.flowGuid = flowGuid.isEmpty() ? m_home->job.flowGuid : flowGuid;
    result.isWeb = result.jobNamePrefix.toLower() == QLatin1String("web");
    return result;
}

void ImportWindowCase::open(int mode)
{
    m_window = new UI::DMS_Import_Widget(mode, nullptr);
    m_window->resize(600, 400);
    m_window->show();
    m_window->setFlowGuid(info());
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void ImportWindowCase::drop(const QList<QUrl> &urls) const
{
    auto *area = m_window->findChild<Services::ImportDropArea *>();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &enter);
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &event);
}

} // namespace KODMS::Tests
