// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/status/FlowStatus.h"
#include "tests/desks/DeskTest.h"
#include "tests/desks/RobotPeer.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Flow_View;
using KODMS::Fakes::MessageBoxProbe;
using Manner = RobotPeer::Manner;

/// The button that sends the job of the current row to the CAM robot.
class ExportWidgetRobotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutACurrentRowAJobIsAskedFor();
    void theBoxIsANotice();
    void theFirstThreeLettersMakeAWebJob_data();
    void theFirstThreeLettersMakeAWebJob();
    void onlyTwoStatusesGoToTheRobot_data();
    void onlyTwoStatusesGoToTheRobot();
    void anUnpaidWebJobIsRefusedBeforeItsStatusIsLookedAt_data();
    void anUnpaidWebJobIsRefusedBeforeItsStatusIsLookedAt();
    void aPaidWebJobStillNeedsItsStatus();
    void whatIsShownCountsAndNotWhatWasSearched();
    void theCurrentRowGoesAndNotTheSelectedOne();
    void nothingElseHappens();
    void aRobotThatIsDownIsSilent_data();
    void aRobotThatIsDownIsSilent();
    void aDeskThatIsClosedBehindItsNotice_data();
    void aDeskThatIsClosedBehindItsNotice();
};

namespace {

const QString NoRow = QStringLiteral("请选择一个料号");
const QString Unpaid = QStringLiteral("此流程状态未付款");
const QString NotReady = QStringLiteral("此流程状态未到机器人处理");

FakeServices &services()
{
    return FakeServices::instance();
}

QByteArray requestFor(const QByteArray &jobName, const QByteArray &fromWeb)
{
    return "{\n    \"module\": \"robot\",\n    \"msgParams\": {\n        \"fromWeb\": " + fromWeb +
           ",\n        \"jobname\": \"" + jobName + "\"\n    },\n    \"msgType\": 1\n}\n";
}

Odbpp_Flow_View flow(int id, const char *jobName, int flowStatus = 1, int checkFlag = 2)
{
    Odbpp_Flow_View flow = someFlow(id);
    flow.jobName = jobName;
    flow.flowStatus = flowStatus;
    flow.checkFlag = checkFlag;
    return flow;
}

/// A reviewer's desk with these flows, the cursor in the first row, and `robot` at
/// the configured address.
std::unique_ptr<KODMS::UI::DMS_Export_Widget> makeDesk(const std::vector<Odbpp_Flow_View> &flows,
                                                       const RobotPeer &robot)
{
    services().flowPages.always({flows, static_cast<int>(flows.size()), true});
    services().config.robotHost = "127.0.0.1";
    services().config.robotPort = robot.port();
    auto desk = KODMS::Tests::makeDesk({Right::CheckAuthority});
    jobTable(*desk)->setCurrentCell(0, 1);
    services().forgetCalls();
    return desk;
}

void press(const KODMS::UI::DMS_Export_Widget &desk)
{
    QTest::mouseClick(control(desk, "m_pSendRobotPB"), Qt::LeftButton);
}

void answerWithPayment(int payment)
{
    KODMS::DataLib::Model::Odbpp_Orders order;
    order.id = 1;
    order.payment = payment;
    services().orders.always(order);
}

} // namespace

void ExportWidgetRobotTest::init()
{
    services().reset();
}

void ExportWidgetRobotTest::withoutACurrentRowAJobIsAskedFor()
{
    RobotPeer robot;
    const auto desk = makeDesk({flow(1, "A1B000001"), flow(2, "A1B000002")}, robot);
    jobTable(*desk)->setCurrentItem(nullptr);
    jobTable(*desk)->item(1, 0)->setSelected(true);
    QCOMPARE(jobTable(*desk)->currentRow(), -1);
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.texts(), QStringList(NoRow));
    QVERIFY(services().calls().isEmpty());
    QCOMPARE(robot.connections(), 0);
}

void ExportWidgetRobotTest::theBoxIsANotice()
{
    RobotPeer robot;
    const auto desk = makeDesk({flow(1, "A1B000001", 0, 0)}, robot);
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.count(), 1);
    const auto &box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, NotReady);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), desk.get());
}

void ExportWidgetRobotTest::theFirstThreeLettersMakeAWebJob_data()
{
    QTest::addColumn<QByteArray>("jobName");
    QTest::addColumn<bool>("isWeb");
    QTest::newRow("capitals") << QByteArray("WEB_A1") << true;
    QTest::newRow("small") << QByteArray("web000001") << true;
    QTest::newRow("mixed") << QByteArray("wEb1") << true;
    QTest::newRow("the three letters alone") << QByteArray("Web") << true;
    QTest::newRow("the letters one later") << QByteArray("aweb") << false;
    QTest::newRow("two of the letters") << QByteArray("WE") << false;
    QTest::newRow("a blank before") << QByteArray(" web1") << false;
    QTest::newRow("no name") << QByteArray("") << false;
    QTest::newRow("another customer") << QByteArray("A1B000001") << false;
}

void ExportWidgetRobotTest::theFirstThreeLettersMakeAWebJob()
{
    QFETCH(QByteArray, jobName);
    QFETCH(bool, isWeb);
    RobotPeer robot(Manner::AnswersAtOnce);
    answerWithPayment(1);
    const auto desk = makeDesk({flow(7, jobName.constData())}, robot);
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.count(), 0);
    QCOMPARE(robot.received(), requestFor(jobName.toLower(), isWeb ? "true" : "false"));
    const QStringList asked{QStringLiteral("Odbpp_OrdersBll::getOrdersByFlowGuid(\"guid7\")")};
    QCOMPARE(services().operationLines(), isWeb ? asked : QStringList());
}

void ExportWidgetRobotTest::onlyTwoStatusesGoToTheRobot_data()
{
    QTest::addColumn<int>("flowStatus");
    QTest::addColumn<int>("checkFlag");
    QTest::addColumn<bool>("goes");
    for (int flowStatus = 0; flowStatus <= 4; ++flowStatus)
        for (int checkFlag = 0; checkFlag <= 3; ++checkFlag)
            QTest::addRow("%d,%d %s", flowStatus, checkFlag,
                          qPrintable(KODMS::UI::flowStatusText(flowStatus, checkFlag)))
                << flowStatus << checkFlag
                << ((flowStatus == 1 && checkFlag == 2) || (flowStatus == 2 && checkFlag == 1));
}

void ExportWidgetRobotTest::onlyTwoStatusesGoToTheRobot()
{
    QFETCH(int, flowStatus);
    QFETCH(int, checkFlag);
    QFETCH(bool, goes);
    for (const char *jobName : {"A1B000001", "web000001"}) {
        RobotPeer robot(Manner::AnswersAtOnce);
        answerWithPayment(1);
        const auto desk = makeDesk({flow(1, jobName, flowStatus, checkFlag)}, robot);
        MessageBoxProbe probe;
        press(*desk);
        QCOMPARE(probe.texts(), goes ? QStringList() : QStringList(NotReady));
        if (goes)
            QVERIFY(!robot.received().isEmpty());
        QCOMPARE(robot.connections(), goes ? 1 : 0);
        QCOMPARE(services().count("Common::getConfig"), goes ? 1 : 0);
    }
}

void ExportWidgetRobotTest::anUnpaidWebJobIsRefusedBeforeItsStatusIsLookedAt_data()
{
    QTest::addColumn<int>("flowStatus");
    QTest::newRow("awaiting pre-processing") << 0;
    QTest::newRow("passed") << 1;
}

void ExportWidgetRobotTest::anUnpaidWebJobIsRefusedBeforeItsStatusIsLookedAt()
{
    QFETCH(int, flowStatus);
    RobotPeer robot;
    answerWithPayment(0);
    const auto desk = makeDesk({flow(3, "WEB_A1", flowStatus, 2 * flowStatus)}, robot);
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.texts(), QStringList(Unpaid));
    QCOMPARE(services().operationLines(),
             QStringList(QStringLiteral("Odbpp_OrdersBll::getOrdersByFlowGuid(\"guid3\")")));
    QCOMPARE(robot.connections(), 0);
}

void ExportWidgetRobotTest::aPaidWebJobStillNeedsItsStatus()
{
    RobotPeer robot;
    answerWithPayment(-1); // whatever is not zero is a payment
    const auto desk = makeDesk({flow(3, "WEB_A1", 2, 0)}, robot);
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.texts(), QStringList(NotReady));
    QCOMPARE(robot.connections(), 0);
}

/// The gates read the texts in the table, whatever put them there.
void ExportWidgetRobotTest::whatIsShownCountsAndNotWhatWasSearched()
{
    RobotPeer robot(Manner::AnswersAtOnce);
    const auto desk = makeDesk({flow(1, "A1B000001", 0, 0)}, robot);
    jobTable(*desk)->blockSignals(true);
    jobTable(*desk)->item(0, 6)->setText(QStringLiteral("机器人未过"));
    jobTable(*desk)->item(0, 1)->setText(QStringLiteral("ABC-01"));
    jobTable(*desk)->blockSignals(false);
    press(*desk);
    QCOMPARE(robot.received(), requestFor("abc-01", "false"));
}

void ExportWidgetRobotTest::theCurrentRowGoesAndNotTheSelectedOne()
{
    RobotPeer robot(Manner::AnswersAtOnce);
    const auto desk =
        makeDesk({flow(1, "A1B000001"), flow(2, "A1B000002"), flow(3, "A1B000003")}, robot);
    jobTable(*desk)->selectRow(2);
    jobTable(*desk)->selectionModel()->setCurrentIndex(jobTable(*desk)->model()->index(1, 1),
                                                       QItemSelectionModel::NoUpdate);
    press(*desk);
    QCOMPARE(robot.received(), requestFor("a1b000002", "false"));
    QCOMPARE(robot.connections(), 1);
}

void ExportWidgetRobotTest::nothingElseHappens()
{
    RobotPeer robot(Manner::AnswersAtOnce);
    const auto desk = makeDesk({flow(1, "A1B000001"), flow(2, "A1B000002")}, robot);
    const QStringList statuses = columnTexts(jobTable(*desk), 6);
    press(*desk);
    QCoreApplication::processEvents();
    QCOMPARE(columnTexts(jobTable(*desk), 6), statuses);
    QCOMPARE(jobTable(*desk)->currentRow(), 0);
    QVERIFY(services().operations().isEmpty());
}

void ExportWidgetRobotTest::aRobotThatIsDownIsSilent_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("refused") << QByteArray("127.0.0.1") << int(refusedPort());
    QTest::newRow("no address") << QByteArray("") << 7071;
    QTest::newRow("a name for an address") << QByteArray("robot") << 7071;
    QTest::newRow("no port") << QByteArray("127.0.0.1") << 0;
}

void ExportWidgetRobotTest::aRobotThatIsDownIsSilent()
{
    QFETCH(QByteArray, host);
    QFETCH(int, port);
    RobotPeer nobody;
    const auto desk = makeDesk({flow(1, "A1B000001")}, nobody);
    services().config.robotHost = host.toStdString();
    services().config.robotPort = port;
    MessageBoxProbe probe;
    press(*desk);
    QCOMPARE(probe.count(), 0);
    QCOMPARE(services().count("Common::getConfig"), 1);
    QCOMPARE(QApplication::topLevelWidgets().count(desk.get()), 1);
}

void ExportWidgetRobotTest::aDeskThatIsClosedBehindItsNotice_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("no row") << -1;
    QTest::newRow("unpaid") << 0;
    QTest::newRow("not ready") << 1;
}

void ExportWidgetRobotTest::aDeskThatIsClosedBehindItsNotice()
{
    QFETCH(int, row);
    RobotPeer robot;
    auto desk = makeDesk({flow(1, "web000001"), flow(2, "A1B000002", 0, 0)}, robot);
    jobTable(*desk)->setCurrentCell(row, 1);
    bool closed = false;
    QTimer::singleShot(0, this, [&desk, &closed] {
        closed = QApplication::activeModalWidget() != nullptr;
        desk.reset();
    });
    control<QPushButton>(*desk, "m_pSendRobotPB")->click();
    QVERIFY(closed);
    QVERIFY(!desk);
    QCOMPARE(robot.connections(), 0);
}

KODMS_TEST_MAIN(ExportWidgetRobotTest, QApplication)
#include "ExportWidgetRobotTest.moc"
