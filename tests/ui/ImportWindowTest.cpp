// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"
#include "tests/ui/ImportWindowCase.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::DMS_UICommon;
using KODMS::UI::Import_Info;

/// The import window, by clicks, keys and drops, on running services.
class ImportWindowTest : public ImportWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isAWindowOfItsOwn();
    void saysWhichJobItIsFor_data();
    void saysWhichJobItIsFor();
    void comesBackForAnotherJob();
    void anOpenWindowComesToTheFront();
    void importsByClicks();
    void importsByKeys();
    void saysWhyTheServiceRefuses();
    void aStoreThatFailsIsSaidAndLeavesTheChoice();
    void announcesWebJobs_data();
    void announcesWebJobs();
    void aRobotResultIsAnnouncedBeforeTheRefresh();
    void anotherJobAsksBeforeItDropsAChoice();
    void theSameJobAgainKeepsTheChoice();
    void aNewJobDuringWorkIsRefused();
    void closingDuringWorkIsRefused();
    void signingOutClosesAndDeletes();
    void signingOutDuringAQuestionImportsNothing();
    void deletedDuringAQuestionImportsNothing();
    void fitsInsideItsSize();
};

void ImportWindowTest::init()
{
    m_home = std::make_unique<ImportHome>();
    m_home->actAsExecutor();
}

void ImportWindowTest::cleanup()
{
    delete m_window;
    m_home.reset();
}

void ImportWindowTest::isAWindowOfItsOwn()
{
    QWidget parent;
    const DMS_Import_Widget plain(&parent);
    const DMS_Import_Widget robot(1, &parent);
    QVERIFY(plain.isWindow() && robot.isWindow());
    QCOMPARE(plain.windowTitle(), QStringLiteral("导入料号"));
    QCOMPARE(robot.windowTitle(), QStringLiteral("导入机器人结果"));
}

void ImportWindowTest::saysWhichJobItIsFor_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("what");
    QTest::newRow("a prepared job") << 0 << QStringLiteral("导入料号：");
    QTest::newRow("a robot's result") << 1 << QStringLiteral("导入机器人结果：");
}

void ImportWindowTest::saysWhichJobItIsFor()
{
    QFETCH(int, mode);
    QFETCH(QString, what);
    open(mode);
    QCOMPARE(text("importTarget"), what + m_home->job.jobName);
    Import_Info named = info();
    named.origJobName = QStringLiteral("电源板");
    m_window->setFlowGuid(named);
    QCOMPARE(text("importTarget"),
             what + m_home->job.jobName + QStringLiteral("（原始料名 电源板）"));
    QVERIFY(!button("importJob")->isEnabled());
}

void ImportWindowTest::comesBackForAnotherJob()
{
    open();
    m_window->showMinimized();
    m_window->setFlowGuid(info());
    QVERIFY(!m_window->isMinimized());
    m_window->close();
    m_window->setFlowGuid(info()); // shown by whoever wants it shown
    QVERIFY(m_window->isHidden());
}

void ImportWindowTest::anOpenWindowComesToTheFront()
{
    open();
    QWidget front;
    front.show();
    front.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&front));
    m_window->setFlowGuid(info());
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void ImportWindowTest::importsByClicks()
{
    open();
    const QSignalSpy refreshed(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    const QSignalSpy web(m_window, &DMS_Import_Widget::webJobHaveSent);
    const QSignalSpy robot(m_window, &DMS_Import_Widget::robotImportComplete);
    drop(m_home->boardArchive());
    click("importJob");
    QCOMPARE(m_home->summary(), QStringLiteral("1,0 [board] 6 layers 550 features by executor"));
    QVERIFY2(text("importMessage").contains(QLatin1String("board")),
             qPrintable(text("importMessage")));
    QVERIFY2(text("importTarget").contains(QLatin1String("board")),
             qPrintable(text("importTarget")));
    QVERIFY(!button("importJob")->isEnabled());
    QTRY_COMPARE(refreshed.size(), 1);
    QCOMPARE(web.size(), 0);
    QCOMPARE(robot.size(), 0);
    click("closeImport");
    QVERIFY(m_window->isHidden());
}

void ImportWindowTest::importsByKeys()
{
    open();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    drop(m_home->boardFolder());
    button("chooseImportFile")->setFocus();
    for (int i = 0; i < 8 && QApplication::focusWidget() != button("importJob"); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), button("importJob"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("1"));
    QTest::keyClick(m_window, Qt::Key_Escape);
    QVERIFY(m_window->isHidden());
}

void ImportWindowTest::saysWhyTheServiceRefuses()
{
    m_home->setState(3, 2);
    open();
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    const QString path = m_home->boardArchive();
    drop(path);
    QVERIFY(QFile::remove(path)); // asked before anything is stored, it is not missed
    click("importJob");
    QCOMPARE(text("importMessage"), QStringLiteral("当前状态不允许此操作"));
    QCOMPARE(notices.size(), 1);
    QVERIFY(button("importJob")->isEnabled()); // the choice stays
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("3"));
}

void ImportWindowTest::aStoreThatFailsIsSaidAndLeavesTheChoice()
{
    open();
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    drop(m_home->boardArchive());
    const QString before = m_home->stock();
    // A file stands where the folder was, which stops even a privileged user.
    const QString root = m_home->house.runtime().configuration().fileStore.root;
    const QString away = root + QStringLiteral(".away");
    QVERIFY(QDir().rename(root, away));
    QFile obstacle(root);
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("import\\.window")));
    click("importJob");
    QVERIFY(!text("importMessage").isEmpty());
    QCOMPARE(notices.size(), 1);
    const QString said = notices.first().at(1).toString();
    QVERIFY2(said.contains(m_home->job.jobName) && said.endsWith(text("importMessage")),
             qPrintable(said));
    QVERIFY(obstacle.remove() && QDir().rename(away, root));
    QCOMPARE(m_home->stock(), before);
    click("importJob"); // nothing was lost
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("1"));
}

void ImportWindowTest::announcesWebJobs_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("told");
    QTest::newRow("a prepared job") << 0 << QStringLiteral("web");
    QTest::newRow("a robot's result") << 1 << QStringLiteral("robot web");
}

void ImportWindowTest::announcesWebJobs()
{
    QFETCH(int, mode);
    QFETCH(QString, told);
    m_home.reset();
    m_home = std::make_unique<ImportHome>(QStringLiteral("Web"));
    m_home->actAsExecutor();
    m_home->setState(2, 2);
    open(mode);
    QStringList signalsSeen;
    connect(m_window, &DMS_Import_Widget::robotImportComplete, m_window,
            [&] { signalsSeen << QStringLiteral("robot"); });
    connect(m_window, &DMS_Import_Widget::webJobHaveSent, m_window,
            [&] { signalsSeen << QStringLiteral("web"); });
    drop(m_home->boardArchive());
    QVERIFY(signalsSeen.isEmpty());
    click("importJob");
    QCOMPARE(signalsSeen.join(QLatin1Char(' ')), told);
}

void ImportWindowTest::aRobotResultIsAnnouncedBeforeTheRefresh()
{
    m_home->setState(2, 2);
    open(1);
    QStringList order;
    connect(m_window, &DMS_Import_Widget::robotImportComplete, m_window, [&] {
        QCoreApplication::processEvents(); // as a message box would
        order << QStringLiteral("announced");
    });
    connect(DMS_UICommon::interface(), &DMS_UICommon::refreshOrigFileTable, m_window,
            [&] { order << QStringLiteral("refreshed"); });
    drop(m_home->boardArchive());
    click("importJob");
    QCOMPARE(order, QStringList(QStringLiteral("announced"))); // the refresh waits for its turn
    QTRY_COMPARE(order, QStringList({QStringLiteral("announced"), QStringLiteral("refreshed")}));
    QCOMPARE(m_home->summary(), QStringLiteral("2,2 [board] 6 layers 550 features by executor"));
}

void ImportWindowTest::anotherJobAsksBeforeItDropsAChoice()
{
    open();
    BoxAnswers boxes;
    const Import_Info other = info(QStringLiteral("another"), QStringLiteral("A1B000002"));
    m_window->setFlowGuid(other); // nothing chosen: nothing asked
    m_window->setFlowGuid(info());
    QVERIFY(boxes.texts.isEmpty());
    drop(m_home->boardArchive());
    boxes.answer(QMessageBox::No);
    m_window->setFlowGuid(other);
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY(text("importTarget").contains(m_home->job.jobName));
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
    boxes.answer(QMessageBox::Yes);
    m_window->setFlowGuid(other);
    QVERIFY(text("importTarget").contains(QLatin1String("A1B000002")));
    QVERIFY(text("importJobName").isEmpty());
    QVERIFY(!button("importJob")->isEnabled());
}

void ImportWindowTest::theSameJobAgainKeepsTheChoice()
{
    open();
    BoxAnswers boxes;
    drop(m_home->boardArchive());
    m_window->close();
    m_window->show();
    m_window->setFlowGuid(info());
    QVERIFY(boxes.texts.isEmpty());
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
}

void ImportWindowTest::aNewJobDuringWorkIsRefused()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->boardArchive();
    drop(path);
    click("importJob");
    drop(path);
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    boxes.meanwhile([this] {
        m_window->setFlowGuid(info(QStringLiteral("another"), QStringLiteral("A1B000002")));
        QVERIFY(text("importMessage").contains(QLatin1String("A1B000002")));
    });
    boxes.answer(QMessageBox::Yes);
    click("importJob");
    QCOMPARE(notices.size(), 1);
    QVERIFY(text("importTarget").contains(m_home->job.jobName));
}

void ImportWindowTest::closingDuringWorkIsRefused()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->boardArchive();
    drop(path);
    click("importJob");
    drop(path);
    boxes.meanwhile([this] { QVERIFY(!m_window->close()); });
    boxes.answer(QMessageBox::Yes);
    click("importJob");
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY(m_window->close());
}

void ImportWindowTest::signingOutClosesAndDeletes()
{
    open();
    drop(m_home->boardArchive());
    m_home->house.signOut();
    QVERIFY(m_window->isHidden());
    QTRY_VERIFY(m_window.isNull());
}

void ImportWindowTest::signingOutDuringAQuestionImportsNothing()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->boardArchive();
    drop(path);
    click("importJob");
    drop(path);
    const QString before = m_home->stock();
    boxes.meanwhile([this] { m_home->house.actAsAdmin(); });
    boxes.answer(QMessageBox::Yes);
    click("importJob");
    QCOMPARE(boxes.texts.size(), 1);
    QTRY_VERIFY(m_window.isNull());
    QCOMPARE(m_home->stock(), before);
}

void ImportWindowTest::deletedDuringAQuestionImportsNothing()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->boardArchive();
    drop(path);
    click("importJob");
    drop(path);
    const QString before = m_home->stock();
    boxes.meanwhile([this] { delete m_window; });
    QMetaObject::invokeMethod(button("importJob"), "click", Qt::QueuedConnection);
    QTRY_VERIFY(m_window.isNull());
    QTRY_COMPARE(m_home->stock(), before);
}

/// The desks give it 600 x 400.
void ImportWindowTest::fitsInsideItsSize()
{
    open();
    drop(m_home->boardArchive());
    const QSize needed = m_window->minimumSizeHint();
    QVERIFY2(needed.width() <= 600 && needed.height() <= 400,
             qPrintable(QStringLiteral("%1 x %2").arg(needed.width()).arg(needed.height())));
}

KODMS_TEST_MAIN(ImportWindowTest, QApplication)
#include "ImportWindowTest.moc"
