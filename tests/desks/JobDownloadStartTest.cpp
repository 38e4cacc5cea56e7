// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>

using namespace KODMS::Tests;
using KODMS::UI::Desk;

/// What comes before the first file is fetched: who may download, what is asked.
class JobDownloadStartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void withoutACurrentRowTheUserIsAskedToSelect_data();
    void withoutACurrentRowTheUserIsAskedToSelect();
    void whoSeesNoFilesFinishesTheFlow();
    void finishingAsksForNoRightAndNoPayment();
    void aFlowThatCannotBeFinishedIsReadAnewToo();
    void whoSeesFilesDownloads_data();
    void whoSeesFilesDownloads();
    void theJobFlowDeskFinishesNothing();
    void finishingNeedsACurrentRow();
    void onlyTheOwnerDownloadsOriginalFiles();
    void aRightIsAskedForBeforeAPayment();
    void anyoneDownloadsJobFlows();

    void anUnpaidWebOrderStops_data() { addDeskRows(); }

    void anUnpaidWebOrderStops();

    void onlyTheCurrentRowHasToBePaid_data() { addDeskRows(); }

    void onlyTheCurrentRowHasToBePaid();
    void webIsComparedToTheLetter_data();
    void webIsComparedToTheLetter();

    void theUserIsAsked_data() { addDeskRows(); }

    void theUserIsAsked();
    void onlyYesDownloads_data();
    void onlyYesDownloads();

    void mixedKindsAreRefusedAfterTheQuestion_data() { addDeskRows(); }

    void mixedKindsAreRefusedAfterTheQuestion();

    void withNothingSelectedTheDownloadIsComplete_data() { addDeskRows(); }

    void withNothingSelectedTheDownloadIsComplete();
};

namespace {

/// A row of a web job. The job-flow desk looks for its order where other people read
/// the pre-processor, which is the column that the original-file desk asks.
JobRow webRow(int number, const QString &origin = QStringLiteral("web"))
{
    JobRow row = jobRow(number, Tgz);
    row.origin = origin;
    row.orderFlow = QStringLiteral("order%1").arg(number);
    row.file += QStringLiteral(".tgz");
    return row;
}

void orderIsPaid(int payment)
{
    KODMS::DataLib::Model::Odbpp_Orders order;
    order.payment = payment;
    FakeServices::instance().orders.always(order);
}

QString orderAsked(Desk desk)
{
    return QStringLiteral("Odbpp_OrdersBll::getOrdersByFlowGuid(\"%1\")")
        .arg(desk == Desk::JobFlow ? QStringLiteral("order1") : QStringLiteral("guid1"));
}

void compareNotice(const DownloadWorld &world, const OperationDesk &desk, const QString &text)
{
    QCOMPARE(world.probe.count(), 1);
    const auto box = world.probe.boxes().first();
    QCOMPARE(box.text, text);
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), desk.widget());
}

} // namespace

void JobDownloadStartTest::withoutACurrentRowTheUserIsAskedToSelect_data()
{
    QTest::addColumn<Desk>("desk");
    QTest::addColumn<QString>("text");
    QTest::newRow("job-flow desk") << Desk::JobFlow << QStringLiteral("请选择一个料号");
    QTest::newRow("original-file desk") << Desk::OrigFile << QStringLiteral("请选择一行数据");
}

void JobDownloadStartTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    QFETCH(Desk, desk);
    QFETCH(QString, text);
    DownloadWorld world;
    const OperationDesk window(desk, {jobRow(1, Tgz)});
    window.select(0);
    window.setCurrent(-1);
    QCOMPARE(window.table()->currentRow(), -1);
    window.download();
    compareNotice(world, window, text);
    QCOMPARE(world.story().size(), 1);
}

/// Their table is the order history, whose second column is the job's name.
void JobDownloadStartTest::whoSeesNoFilesFinishesTheFlow()
{
    DownloadWorld world;
    const OperationDesk window(Desk::OrigFile, {jobRow(1, Tgz), jobRow(2, Tgz)},
                               {Right::PreProcess, Right::OrigFileUpdate, Right::OrigFileAssign,
                                Right::CheckAuthority, Right::PreCheckAssign});
    window.select(0);
    window.setCurrent(1);
    window.download();
    const QStringList story = world.story();
    QCOMPARE(story.size(), 2);
    QCOMPARE(story.at(0), QStringLiteral("DBS_API::kodms_update_flow_status(\"board2\", 3, 2)"));
    QVERIFY(story.at(1).startsWith(QStringLiteral("Odbpp_Flow_ViewBll::select")));
    QCOMPARE(world.probe.count(), 0);
}

/// The row is somebody else's, and of a web job that nobody paid.
void JobDownloadStartTest::finishingAsksForNoRightAndNoPayment()
{
    DownloadWorld world;
    orderIsPaid(0);
    const OperationDesk window(Desk::OrigFile, {webRow(1)}, {});
    window.table()->item(0, 15)->setText(QString::number(DownloadUser + 1));
    window.select(0);
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story().size(), 2);
    QCOMPARE(world.story().first(),
             QStringLiteral("DBS_API::kodms_update_flow_status(\"board1\", 3, 2)"));
    QCOMPARE(world.probe.count(), 0);
}

void JobDownloadStartTest::aFlowThatCannotBeFinishedIsReadAnewToo()
{
    DownloadWorld world;
    FakeServices::instance().result("DBS_API::kodms_update_flow_status").always(0);
    const OperationDesk window(Desk::OrigFile, {jobRow(1, Tgz)}, {});
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story().size(), 2);
    QVERIFY(world.story().last().startsWith(QStringLiteral("Odbpp_OrigFile_ViewBll::select")));
}

void JobDownloadStartTest::whoSeesFilesDownloads_data()
{
    QTest::addColumn<Right>("right");
    for (const Right right : {Right::TestAdmin, Right::ShowCompanyName, Right::Admin})
        QTest::newRow(qPrintable(rightName(right))) << right;
}

void JobDownloadStartTest::whoSeesFilesDownloads()
{
    QFETCH(Right, right);
    DownloadWorld world;
    const OperationDesk window(Desk::OrigFile, {jobRow(1, Tgz)}, {right});
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story(), QStringList({Ask}));
}

void JobDownloadStartTest::theJobFlowDeskFinishesNothing()
{
    DownloadWorld world;
    const OperationDesk window(Desk::JobFlow, {jobRow(1, Tgz)}, {});
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story(), QStringList({Ask}));
}

void JobDownloadStartTest::finishingNeedsACurrentRow()
{
    DownloadWorld world;
    const OperationDesk window(Desk::OrigFile, {jobRow(1, Tgz)}, {});
    window.download();
    compareNotice(world, window, QStringLiteral("请选择一行数据"));
    QCOMPARE(world.story().size(), 1);
}

void JobDownloadStartTest::onlyTheOwnerDownloadsOriginalFiles()
{
    DownloadWorld world;
    JobRow foreign = webRow(1);
    foreign.origin = QStringLiteral("A1B");
    foreign.owner = DownloadUser + 1;
    const OperationDesk window(Desk::OrigFile, {foreign});
    window.select(0);
    window.setCurrent(0);
    window.download();
    compareNotice(world, window, QStringLiteral("以下项你没有下载权限：board1"));
    QCOMPARE(world.story().size(), 1);
}

/// A web job goes by the name of its file.
void JobDownloadStartTest::aRightIsAskedForBeforeAPayment()
{
    DownloadWorld world;
    orderIsPaid(0);
    JobRow foreign = webRow(1);
    foreign.owner = DownloadUser + 1;
    const OperationDesk window(Desk::OrigFile, {foreign});
    window.select(0);
    window.setCurrent(0);
    window.download();
    compareNotice(world, window, QStringLiteral("以下项你没有下载权限：file1"));
    QCOMPARE(world.story().size(), 1);
}

void JobDownloadStartTest::anyoneDownloadsJobFlows()
{
    DownloadWorld world;
    JobRow foreign = jobRow(1, Tgz);
    foreign.owner = DownloadUser + 1;
    const OperationDesk window(Desk::JobFlow, {foreign});
    window.select(0);
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.story(), QStringList({Ask}));
}

void JobDownloadStartTest::anUnpaidWebOrderStops()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    orderIsPaid(0);
    const OperationDesk window(desk, {webRow(1), jobRow(2, Tgz)});
    window.select(0, 1);
    window.setCurrent(0);
    window.download();
    compareNotice(world, window, QStringLiteral("此流程状态未付款"));
    QCOMPARE(world.story().first(), orderAsked(desk));
    QCOMPARE(world.story().size(), 2);
}

void JobDownloadStartTest::onlyTheCurrentRowHasToBePaid()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    orderIsPaid(0);
    const OperationDesk window(desk, {webRow(1), jobRow(2, Tgz)});
    window.select(0, 1);
    window.setCurrent(1);
    window.download();
    QCOMPARE(world.story(), QStringList({Ask}));
}

void JobDownloadStartTest::webIsComparedToTheLetter_data()
{
    QTest::addColumn<QString>("origin");
    QTest::addColumn<int>("payment");
    QTest::addColumn<bool>("looksForOrder");
    QTest::newRow("web, paid") << QStringLiteral("web") << 1 << true;
    QTest::newRow("web, paid with another mark") << QStringLiteral("web") << -1 << true;
    QTest::newRow("Web, unpaid") << QStringLiteral("Web") << 0 << false;
    QTest::newRow("web with a tail, unpaid") << QStringLiteral("web1") << 0 << false;
    QTest::newRow("no origin, unpaid") << QString() << 0 << false;
}

void JobDownloadStartTest::webIsComparedToTheLetter()
{
    QFETCH(QString, origin);
    QFETCH(int, payment);
    QFETCH(bool, looksForOrder);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        DownloadWorld world;
        orderIsPaid(payment);
        const OperationDesk window(desk, {webRow(1, origin)});
        window.setCurrent(0);
        window.download();
        QCOMPARE(world.story(),
                 looksForOrder ? QStringList({orderAsked(desk), Ask}) : QStringList({Ask}));
    }
}

void JobDownloadStartTest::theUserIsAsked()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, {jobRow(1, Tgz)});
    window.select(0);
    window.setCurrent(0);
    window.download();
    QCOMPARE(world.probe.count(), 1);
    const auto box = world.probe.boxes().first();
    QCOMPARE(box.text, QStringLiteral("确认下载这些job?"));
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
    QCOMPARE(box.parent.data(), window.widget());
}

void JobDownloadStartTest::onlyYesDownloads_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("Cancel") << QMessageBox::Cancel;
    QTest::newRow("dismissed") << QMessageBox::NoButton;
}

void JobDownloadStartTest::onlyYesDownloads()
{
    QFETCH(QMessageBox::StandardButton, answer);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        DownloadWorld world;
        const OperationDesk window(desk, {jobRow(1, Tgz)});
        window.select(0);
        window.setCurrent(0);
        world.probe.answer(answer);
        window.download();
        QCOMPARE(world.story(), QStringList({Ask}));
    }
}

void JobDownloadStartTest::mixedKindsAreRefusedAfterTheQuestion()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, {jobRow(1, Zip), jobRow(2, Zip)});
    for (int row = 0; row < 2; ++row)
        window.select(row);
    window.setCurrent(0);
    world.agree();
    window.download();
    QCOMPARE(world.story().size(), 2);
    QCOMPARE(world.story().first(), Ask);
    const auto box = world.probe.boxes().last();
    QCOMPARE(box.text, QStringLiteral("请确认选择的下载的料时同一种类型（tgz或者gerber）。\n"
                                      "若选择的Gerber，目前仅支持单选！?"));
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

/// The current row alone is not a selection.
void JobDownloadStartTest::withNothingSelectedTheDownloadIsComplete()
{
    QFETCH(Desk, desk);
    DownloadWorld world;
    const OperationDesk window(desk, {jobRow(1, Zip)});
    window.setCurrent(0);
    world.agree();
    window.download();
    QCOMPARE(world.story(), QStringList({Ask, Complete, opened(QString())}));
}

KODMS_TEST_MAIN(JobDownloadStartTest, QApplication)
#include "JobDownloadStartTest.moc"
