// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/BoxStory.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;

/// What the original-file desk does around the robot's results.
class DownloadWidgetRobotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();

    void cleanup() { m_desk.reset(); }

    void completeWithoutACurrentRowAsksToSelect();
    void completeWithARowDoesNothing();
    void aFinishedImportDownloads_data();
    void aFinishedImportDownloads();

private:
    void call(const char *slot) const { QMetaObject::invokeMethod(m_desk.get(), slot); }

    std::unique_ptr<KODMS::UI::DMS_Download_Widget> m_desk;
};

void DownloadWidgetRobotTest::init()
{
    FakeServices::instance().reset();
    answerWithFlows(3);
    m_desk = makeDownloadDesk();
    FakeServices::instance().forgetCalls();
}

void DownloadWidgetRobotTest::completeWithoutACurrentRowAsksToSelect()
{
    const BoxStory boxes;
    control<QPushButton>(*m_desk, "m_pRobotComplete")->click();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一行数据\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void DownloadWidgetRobotTest::completeWithARowDoesNothing()
{
    jobTable(*m_desk)->setCurrentCell(1, 1);
    const BoxStory boxes;
    control<QPushButton>(*m_desk, "m_pRobotComplete")->click();
    QVERIFY(FakeServices::instance().calls().isEmpty());
    QCOMPARE(boxes.probe.count(), 0);
}

void DownloadWidgetRobotTest::aFinishedImportDownloads_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("firstLine");
    QTest::newRow("no current row") << -1 << QStringLiteral("box(\"请选择一行数据\")");
    QTest::newRow("who has the history finishes the flow")
        << 1 << QStringLiteral("DBS_API::kodms_update_flow_status(\"A1B100002\", 3, 2)");
}

/// The very same as the download button: line by line.
void DownloadWidgetRobotTest::aFinishedImportDownloads()
{
    QFETCH(int, row);
    QFETCH(QString, firstLine);
    const BoxStory boxes;
    QStringList stories;
    for (const char *slot : {"on_m_pRobotImport_robotImportComplete", "on_m_pDownloadPB_Clicked"}) {
        init(); // the download leaves other rows behind
        jobTable(*m_desk)->setCurrentCell(row, row < 0 ? -1 : 1);
        call(slot);
        stories << BoxStory::text();
    }
    QCOMPARE(stories.first().section(QLatin1Char('\n'), 0, 0), firstLine);
    QCOMPARE(stories.first(), stories.last());
}

KODMS_TEST_MAIN(DownloadWidgetRobotTest, QApplication)
#include "DownloadWidgetRobotTest.moc"
