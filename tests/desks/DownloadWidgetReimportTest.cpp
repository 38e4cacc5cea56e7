// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/FlowRow.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "tests/desks/BoxStory.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/desks/Receivers.h"
#include "tests/desks/WindowStory.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::Import_Info;

/// The window in which a robot's result is imported again.
class DownloadWidgetReimportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();
    void cleanup();

    void withoutACurrentRowTheUserIsAskedToSelect();
    void onlyAPassedRobotResultIsImportedAgain_data();
    void onlyAPassedRobotResultIsImportedAgain();
    void theStatusIsLogged_data();
    void theStatusIsLogged();
    void theFirstUseMakesTheWindow();
    void theWindowBelongsToTheDesksGrandparent();
    void withoutAGrandparentItBelongsToNobody();
    void theWindowIsToldTheJob();
    void onlyAWebJobTellsItsFile_data();
    void onlyAWebJobTellsItsFile();
    void theCurrentRowCountsNotTheSelection();
    void aRefusedRowLeavesTheWindowAlone();
    void aClosedWindowIsShownAgain();
    void anOpenWindowIsRaised();
    void aWindowThatIsGoneIsMadeAnew();
    void aFinishedImportDownloads();

private:
    void press() const { control<QPushButton>(*m_desk, "m_pRobotImport")->click(); }

    void makeCurrent(int row) const { jobTable(*m_desk)->setCurrentCell(row, 1); }

    DMS_Import_Widget *window() const;

    std::unique_ptr<WindowStory> m_windows;
    std::unique_ptr<DMS_Download_Widget> m_desk;
};

namespace {

KODMS::DataLib::Model::Odbpp_Flow_View flow(int id, const char *jobName, int status, int flag)
{
    auto flow = someFlow(id);
    flow.jobName = jobName;
    flow.uuid = "file" + std::to_string(id) + ".tgz";
    flow.flowStatus = status;
    flow.checkFlag = flag;
    return flow;
}

Import_Info told(int index)
{
    return FakeServices::instance()
        .calls("DMS_Import_Widget::setFlowGuid")
        .at(index)
        .arguments.first()
        .value<Import_Info>();
}

} // namespace

void DownloadWidgetReimportTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().flowPages.always(
        {{flow(1, "A1B000001", 2, 2), flow(2, "Web000002", 2, 2), flow(3, "A1B000003", 3, 2)},
         3,
         true});
    m_windows = std::make_unique<WindowStory>();
    m_desk = makeDownloadDesk();
    FakeServices::instance().forgetCalls();
}

void DownloadWidgetReimportTest::cleanup()
{
    m_desk.reset();
    m_windows.reset();
}

DMS_Import_Widget *DownloadWidgetReimportTest::window() const
{
    const auto &windows = FakeServices::instance().windows;
    return windows.isEmpty() ? nullptr
                             : qobject_cast<DMS_Import_Widget *>(windows.last().window.data());
}

void DownloadWidgetReimportTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一行数据\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void DownloadWidgetReimportTest::onlyAPassedRobotResultIsImportedAgain_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    for (int status = 0; status <= 4; ++status)
        for (int flag = 0; flag <= 3; ++flag)
            QTest::addRow("%d, %d", status, flag) << status << flag;
}

void DownloadWidgetReimportTest::onlyAPassedRobotResultIsImportedAgain()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    FakeServices::instance().flowPages.always({{flow(1, "A1B000001", status, flag)}, 1, true});
    m_desk = makeDownloadDesk();
    makeCurrent(0);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    press();
    const bool isAllowed = status == 2 && flag == 2;
    QCOMPARE(window() != nullptr, isAllowed);
    if (isAllowed)
        return;
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"所选项状态不合法！\")"));
    QCOMPARE(boxes.probe.boxes().first().title, QStringLiteral("Information"));
    QCOMPARE(boxes.probe.boxes().first().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void DownloadWidgetReimportTest::theStatusIsLogged_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("line");
    QTest::newRow("allowed") << 0 << QStringLiteral("机器人通过");
    QTest::newRow("refused") << 2 << QStringLiteral("流程完成");
}

void DownloadWidgetReimportTest::theStatusIsLogged()
{
    QFETCH(int, row);
    QFETCH(QString, line);
    makeCurrent(row);
    const BoxStory boxes;
    QTest::ignoreMessage(QtDebugMsg, line.toLocal8Bit().constData());
    press();
}

void DownloadWidgetReimportTest::theFirstUseMakesTheWindow()
{
    makeCurrent(0);
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("DMS_Import_Widget::DMS_Import_Widget(1, null)\n"
                                              "shown()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"A1B000001\")"));
    QCOMPARE(window()->size(), QSize(600, 400));
    QCOMPARE(boxes.probe.count(), 0);
}

void DownloadWidgetReimportTest::theWindowBelongsToTheDesksGrandparent()
{
    QWidget host;
    QWidget place(&host);
    m_desk.reset();
    auto *desk = new DMS_Download_Widget(&place);
    jobTable(*desk)->setCurrentCell(0, 1);
    control<QPushButton>(*desk, "m_pRobotImport")->click();
    QCOMPARE(window()->parentWidget(), &host);
    delete desk;
    QVERIFY(window());
    QCOMPARE(Receivers::of(window(), "robotImportComplete()"), 0);
}

void DownloadWidgetReimportTest::withoutAGrandparentItBelongsToNobody()
{
    QWidget place;
    m_desk.reset();
    auto *desk = new DMS_Download_Widget(&place);
    jobTable(*desk)->setCurrentCell(0, 1);
    control<QPushButton>(*desk, "m_pRobotImport")->click();
    QCOMPARE(window()->parentWidget(), nullptr);
}

void DownloadWidgetReimportTest::theWindowIsToldTheJob()
{
    makeCurrent(0);
    press();
    const Import_Info info = told(0);
    QCOMPARE(info.jobNamePrefix, QStringLiteral("A1B"));
    QCOMPARE(info.jobName, QStringLiteral("A1B000001"));
    QCOMPARE(info.origJobName, QStringLiteral("board"));
    QCOMPARE(info.flowGuid, QStringLiteral("guid1"));
}

void DownloadWidgetReimportTest::onlyAWebJobTellsItsFile_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("isWeb");
    QTest::addColumn<QString>("file");
    QTest::newRow("another customer's") << 0 << false << QString();
    QTest::newRow("from the web") << 1 << true << QStringLiteral("file2.tgz");
}

void DownloadWidgetReimportTest::onlyAWebJobTellsItsFile()
{
    QFETCH(int, row);
    QFETCH(bool, isWeb);
    QFETCH(QString, file);
    makeCurrent(row);
    press();
    QCOMPARE(told(0).isWeb, isWeb);
    QCOMPARE(told(0).uuid, file);
}

void DownloadWidgetReimportTest::theCurrentRowCountsNotTheSelection()
{
    auto *table = jobTable(*m_desk);
    table->setCurrentCell(1, 1);
    table->clearSelection();
    table->setRangeSelected({2, 0, 2, table->columnCount() - 1}, true);
    QCOMPARE(table->currentRow(), 1);
    press();
    QCOMPARE(told(0).jobName, QStringLiteral("Web000002"));
}

void DownloadWidgetReimportTest::aRefusedRowLeavesTheWindowAlone()
{
    makeCurrent(0);
    press();
    window()->hide();
    makeCurrent(2);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"所选项状态不合法！\")"));
    QVERIFY(window()->isHidden());
}

void DownloadWidgetReimportTest::aClosedWindowIsShownAgain()
{
    makeCurrent(0);
    press();
    window()->resize(800, 300);
    window()->close();
    makeCurrent(1);
    FakeServices::instance().forgetCalls();
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("shown()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"Web000002\")"));
    QCOMPARE(FakeServices::instance().windows.size(), 1);
    QCOMPARE(window()->size(), QSize(800, 300));
    QCOMPARE(Receivers::of(window(), "robotImportComplete()"), 1);
}

void DownloadWidgetReimportTest::anOpenWindowIsRaised()
{
    makeCurrent(0);
    press();
    makeCurrent(1);
    FakeServices::instance().forgetCalls();
    press();
    QCOMPARE(BoxStory::text(), QStringLiteral("raised()\n"
                                              "DMS_Import_Widget::setFlowGuid(\"Web000002\")"));
    QCOMPARE(FakeServices::instance().windows.size(), 1);
}

void DownloadWidgetReimportTest::aWindowThatIsGoneIsMadeAnew()
{
    makeCurrent(0);
    press();
    delete window();
    press();
    QCOMPARE(FakeServices::instance().windows.size(), 2);
    QVERIFY(window()->isVisible());
    QCOMPARE(window()->size(), QSize(600, 400));
}

/// The table that the import window's own refresh has left decides what follows.
void DownloadWidgetReimportTest::aFinishedImportDownloads()
{
    makeCurrent(0);
    press();
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    Q_EMIT window()->robotImportComplete();
    QCOMPARE(BoxStory::lines().first(),
             QStringLiteral("DBS_API::kodms_update_flow_status(\"A1B000001\", 3, 2)"));
    FakeServices::instance().forgetCalls();
    Q_EMIT window()->robotImportComplete();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一行数据\")"));
}

KODMS_TEST_MAIN(DownloadWidgetReimportTest, QApplication)
#include "DownloadWidgetReimportTest.moc"
