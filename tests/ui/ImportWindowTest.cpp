// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/ui/imports/ImportDropArea.h"
#include "tests/archive/SampleArchives.h"
#include "tests/imports/support/ImportHome.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_Import_Widget;
using KODMS::UI::DMS_UICommon;
using KODMS::UI::Import_Info;

/// The import window, by clicks, keys and drops, on running services.
class ImportWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isAWindowOfItsOwn();
    void saysWhichJobItIsFor();
    void comesBackForAnotherJob();
    void showsWhatWillBeImported();
    void importsByClicks();
    void importsByKeys();
    void choosesWithTheFileDialog();
    void refusesWithFileAndLine();
    void refusesDropsOfNoUse_data();
    void refusesDropsOfNoUse();
    void saysWhyTheServiceRefuses();
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

private:
    Import_Info info(const QString &flowGuid = {}, const QString &jobName = {}) const;
    void open(int mode = 0);
    void drop(const QList<QUrl> &urls) const;

    void drop(const QString &path) const { drop(QList<QUrl>{QUrl::fromLocalFile(path)}); }

    QString text(const char *name) const
    {
        const auto *label = m_window->findChild<QLabel *>(QLatin1String(name));
        return label && !label->isHidden() ? label->text() : QString();
    }

    QPushButton *button(const char *name) const
    {
        return m_window->findChild<QPushButton *>(QLatin1String(name));
    }

    void click(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    std::unique_ptr<ImportHome> m_home;
    QPointer<DMS_Import_Widget> m_window;
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

Import_Info ImportWindowTest::info(const QString &flowGuid, const QString &jobName) const
{
    Import_Info result;
    result.jobName = jobName.isEmpty() ? m_home->job.jobName : jobName;
    result.jobNamePrefix = result.jobName.left(3);
    result.flowGuid = flowGuid.isEmpty() ? m_home->job.flowGuid : flowGuid;
    result.isWeb = result.jobNamePrefix.toLower() == QLatin1String("web");
    return result;
}

void ImportWindowTest::open(int mode)
{
    m_window = new DMS_Import_Widget(mode, nullptr);
    m_window->resize(600, 400);
    m_window->show();
    m_window->setFlowGuid(info());
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void ImportWindowTest::drop(const QList<QUrl> &urls) const
{
    auto *area = m_window->findChild<ImportDropArea *>();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &enter);
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &event);
}

void ImportWindowTest::isAWindowOfItsOwn()
{
    QWidget parent;
    const DMS_Import_Widget plain(&parent);
    const DMS_Import_Widget robot(1, &parent);
    QVERIFY(plain.isWindow() && robot.isWindow());
    QVERIFY(plain.windowTitle() != robot.windowTitle());
}

void ImportWindowTest::saysWhichJobItIsFor()
{
    open();
    QVERIFY(text("importTarget").contains(m_home->job.jobName));
    Import_Info named = info();
    named.origJobName = QStringLiteral("电源板");
    m_window->setFlowGuid(named);
    QVERIFY(text("importTarget").contains(QStringLiteral("电源板")));
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

void ImportWindowTest::showsWhatWillBeImported()
{
    open();
    drop(m_home->boardArchive());
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
    QCOMPARE(text("importSteps"), QStringLiteral("pcb"));
    QCOMPARE(text("importLayers"), QStringLiteral("6（矩阵 12 行）"));
    QCOMPARE(text("importLayerTypes"),
             QStringLiteral("COMPONENT 1，DOCUMENT 1，DRILL 1，MIXED 1，POWER_GROUND 1，SIGNAL 4，"
                            "SILK_SCREEN 1，SOLDER_MASK 2"));
    QCOMPARE(text("importFeatures"), QStringLiteral("550"));
    QVERIFY(text("importSize").contains(QStringLiteral("个文件")));
    QVERIFY(button("importJob")->isEnabled());
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("0"));
    drop(m_home->boardFolder(QStringLiteral("folder")));
    QCOMPARE(text("importJobName"), QStringLiteral("folder"));
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

void ImportWindowTest::choosesWithTheFileDialog()
{
    open();
    const QString path = m_home->boardArchive();
    QTimer::singleShot(0, qApp, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    click("chooseImportFile");
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
}

void ImportWindowTest::refusesWithFileAndLine()
{
    open();
    const QString path = m_home->house.path(QStringLiteral("bad.tgz"));
    QVERIFY(writeFile(path, tgzOf(smallJob("P 1 1 0 P 0 0\nP 1 one 0 P 0 0\n"))));
    drop(m_home->boardArchive());
    drop(path);
    QCOMPARE(text("importMessage"),
             QStringLiteral("job/steps/pcb/layers/l1/features 第 2 行：不是数值：one"));
    QVERIFY(text("importJobName").isEmpty());
    QVERIFY(!button("importJob")->isEnabled());
    QCOMPARE(text("importPath"), QStringLiteral("bad.tgz"));
}

void ImportWindowTest::refusesDropsOfNoUse_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::newRow("two files") << QList<QUrl>{QUrl(QStringLiteral("file:///a")),
                                              QUrl(QStringLiteral("file:///b"))};
    QTest::newRow("a page") << QList<QUrl>{QUrl(QStringLiteral("https://example.invalid/x.tgz"))};
    QTest::newRow("a file that is not there")
        << QList<QUrl>{QUrl(QStringLiteral("file:///nothing"))};
}

void ImportWindowTest::refusesDropsOfNoUse()
{
    QFETCH(QList<QUrl>, urls);
    open();
    drop(urls);
    QVERIFY(!text("importMessage").isEmpty());
    QVERIFY(!button("importJob")->isEnabled());
}

void ImportWindowTest::saysWhyTheServiceRefuses()
{
    m_home->setState(3, 2);
    open();
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    drop(m_home->boardArchive());
    click("importJob");
    QCOMPARE(text("importMessage"), QStringLiteral("当前状态不允许此操作"));
    QCOMPARE(notices.size(), 1);
    QVERIFY(button("importJob")->isEnabled()); // the choice stays
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("3"));
}

void ImportWindowTest::announcesWebJobs()
{
    m_home.reset();
    m_home = std::make_unique<ImportHome>(QStringLiteral("Web"));
    m_home->actAsExecutor();
    open();
    const QSignalSpy web(m_window, &DMS_Import_Widget::webJobHaveSent);
    drop(m_home->boardArchive());
    QCOMPARE(web.size(), 0);
    click("importJob");
    QCOMPARE(web.size(), 1);
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
