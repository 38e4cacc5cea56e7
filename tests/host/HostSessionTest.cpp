// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HostSession.h"
#include "apps/desk/CamRelay.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/SignInWindow.h"
#include "apps/desk/StatusFields.h"
#include "desks/export/DMS_Export_Widget.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include <memory>

using namespace KODMS::Host;
using KODMS::Services::SignIn;
using KODMS::Tests::SampleInstallation;
using KODMS::UI::DMS_Export_Widget;
using KODMS::UI::DMS_UICommon;

class HostSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void signingInOpensTheDesk();
    void theFirstWindowFitsTheScreen();
    void theWindowSaysWhoAndWhere();
    void switchingUserStartsAfresh();
    void closingTheWindowEndsTheSession();
    void closingTheSignInWindowEndsTheHost();
    void columnsComeBackForTheirUserOnly();
    void theContrastColumnIsAPreference();
    void refreshAsksTheDesk();
    void noticesReachTheStatusBar();
    void whatGoesToTheCamSideIsSaid();
    void theCamSideHasAKey();
    void panelsComeBackForTheirUserOnly();
    void onlyFileKeepersMayTakeIn_data();
    void onlyFileKeepersMayTakeIn();
    void everyRoleHasAName();
    void aDatabaseThatFailsIsToldAndSurvived();

private:
    void signIn(const QString &role);

    MainWindow &window() { return *m_session->mainWindow(); }

    QTableWidget &jobs()
    {
        const auto *desk = window().findChild<DMS_Export_Widget *>();
        return *desk->findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
    }

    QAction &action(const char *name)
    {
        return *window().findChild<QAction *>(QLatin1String(name));
    }

    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<NoticeLog> m_notices;
    std::unique_ptr<HandOverLog> m_handOvers;
    std::unique_ptr<HostSession> m_session;
};

void HostSessionTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    m_preferences =
        std::make_unique<Preferences>(Preferences::fileBeside(m_installation->configPath()));
}

void HostSessionTest::init()
{
    m_notices = std::make_unique<NoticeLog>();
    m_handOvers = std::make_unique<HandOverLog>();
    connect(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice, m_notices.get(),
            &NoticeLog::add);
    m_session = std::make_unique<HostSession>(*m_preferences, *m_notices, *m_handOvers);
}

void HostSessionTest::cleanup()
{
    m_session.reset();
    m_notices.reset();
    m_handOvers.reset();
    SignIn::signOut();
}

void HostSessionTest::signIn(const QString &role)
{
    const auto account = m_installation->account(role);
    SignInWindow *signIn = m_session->showSignIn();
    signIn->findChild<QLineEdit *>(QStringLiteral("login"))->setText(account.loginName);
    auto *password = signIn->findChild<QLineEdit *>(QStringLiteral("password"));
    password->setText(account.password);
    QTest::keyClick(password, Qt::Key_Return);
}

void HostSessionTest::signingInOpensTheDesk()
{
    SignInWindow *signInWindow = m_session->showSignIn();
    QVERIFY(!m_session->mainWindow());
    signIn(QStringLiteral("admin"));
    QVERIFY(m_session->mainWindow());
    QVERIFY(window().isVisible());
    QVERIFY(!signInWindow->isVisible());
    QVERIFY(window().findChild<DMS_Export_Widget *>());
    QCOMPARE(window().findChild<QTabWidget *>(QStringLiteral("deskTabs"))->tabText(0),
             QStringLiteral("料号流程"));
    QVERIFY(window().findChild<QLabel *>(QStringLiteral("sampleBanner"))->isVisible());
}

/// With the frame around it: what goes wrong is said in its lowest line.
void HostSessionTest::theFirstWindowFitsTheScreen()
{
    signIn(QStringLiteral("pre-process"));
    const QSize room = window().screen()->availableSize();
    QVERIFY(window().height() <= room.height() - 40);
    QVERIFY(window().width() <= room.width() - 16);
}

void HostSessionTest::theWindowSaysWhoAndWhere()
{
    signIn(QStringLiteral("check-authority"));
    const auto account = m_installation->account(QStringLiteral("check-authority"));
    auto *user = window().statusBar()->findChild<QLabel *>(QStringLiteral("userField"));
    auto *database = window().statusBar()->findChild<QLabel *>(QStringLiteral("databaseField"));
    QVERIFY(user->toolTip().contains(account.loginName));
    QVERIFY(user->toolTip().contains(QStringLiteral("审核")));
    QVERIFY(user->accessibleName().contains(account.realName));
    QVERIFY(database->toolTip().contains(m_installation->databaseName()));
    QVERIFY(window().windowTitle().contains(account.realName));
}

void HostSessionTest::switchingUserStartsAfresh()
{
    signIn(QStringLiteral("admin"));
    const QPointer<DMS_Export_Widget> firstDesk = window().findChild<DMS_Export_Widget *>();
    m_notices->add(1, QStringLiteral("only for the first user"));
    m_handOvers->addExport(QStringLiteral("only for the first user"), 1);
    const QSignalSpy finished(m_session.get(), &HostSession::finished);

    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());
    QVERIFY(firstDesk.isNull());
    QCOMPARE(SignIn::current().id, 0);
    QCOMPARE(m_notices->rowCount(), 0);
    QCOMPARE(m_handOvers->rowCount(), 0);
    QCOMPARE(finished.size(), 0);
    SignInWindow *again = m_session->showSignIn();
    QVERIFY(again->isVisible());
    QCOMPARE(again->findChild<QLineEdit *>(QStringLiteral("login"))->text(),
             m_installation->account(QStringLiteral("admin")).loginName);
    QVERIFY(again->findChild<QLineEdit *>(QStringLiteral("password"))->text().isEmpty());

    signIn(QString());
    QVERIFY(m_session->mainWindow());
    QVERIFY(!window().findChild<QWidget *>(QStringLiteral("m_pJobPassPB")));
}

void HostSessionTest::closingTheWindowEndsTheSession()
{
    signIn(QStringLiteral("admin"));
    QSignalSpy finished(m_session.get(), &HostSession::finished);
    window().close();
    QVERIFY(finished.wait(2000));
    QVERIFY(!m_session->mainWindow());
    QCOMPARE(SignIn::current().id, 0);
}

void HostSessionTest::closingTheSignInWindowEndsTheHost()
{
    const QSignalSpy finished(m_session.get(), &HostSession::finished);
    m_session->showSignIn()->close();
    QCOMPARE(finished.size(), 1);
}

void HostSessionTest::columnsComeBackForTheirUserOnly()
{
    signIn(QStringLiteral("admin"));
    jobs().setColumnWidth(2, 317);
    jobs().horizontalHeader()->moveSection(jobs().horizontalHeader()->visualIndex(12), 0);
    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());

    signIn(QStringLiteral("check-authority"));
    QVERIFY(jobs().columnWidth(2) != 317);
    QCOMPARE(jobs().horizontalHeader()->visualIndex(12), 12);
    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());

    signIn(QStringLiteral("admin"));
    QCOMPARE(jobs().columnWidth(2), 317);
    QCOMPARE(jobs().horizontalHeader()->visualIndex(12), 0);
    QVERIFY(jobs().isColumnHidden(8));
}

void HostSessionTest::theContrastColumnIsAPreference()
{
    signIn(QStringLiteral("admin"));
    QVERIFY(!jobs().itemDelegateForColumn(6));
    action("highContrastAction").trigger();
    QVERIFY(jobs().itemDelegateForColumn(6));
    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());
    signIn(QStringLiteral("admin"));
    QVERIFY(jobs().itemDelegateForColumn(6));
    QVERIFY(action("highContrastAction").isChecked());
    action("highContrastAction").trigger();
    QVERIFY(!jobs().itemDelegateForColumn(6));
}

void HostSessionTest::refreshAsksTheDesk()
{
    signIn(QStringLiteral("admin"));
    const QSignalSpy refresh(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    QTest::keyClick(&window(), Qt::Key_F5);
    QCOMPARE(refresh.size(), 1);
}

void HostSessionTest::noticesReachTheStatusBar()
{
    signIn(QString());
    m_notices->markRead();
    auto *count = window().findChild<QToolButton *>(QStringLiteral("noticeCount"));
    auto *latest = window().findChild<QLabel *>(QStringLiteral("latestNotice"));
    Q_EMIT DMS_UICommon::interface()->serviceNotice(2, QStringLiteral("磁盘\n已满"));
    QCOMPARE(m_notices->unread(), 1);
    QVERIFY(count->text().contains(QLatin1Char('1')));
    QCOMPARE(latest->toolTip(), QStringLiteral("磁盘\n已满"));
    auto *panel = window().findChild<QDockWidget *>(QStringLiteral("noticePanel"));
    QVERIFY(!panel->isVisible());
    QTest::mouseClick(latest, Qt::LeftButton);
    QVERIFY(panel->isVisible());
    QCOMPARE(m_notices->unread(), 0);
    QVERIFY(!count->text().contains(QLatin1Char('1')));
}

void HostSessionTest::whatGoesToTheCamSideIsSaid()
{
    const CamRelay relay(*m_notices, *m_handOvers);
    DMS_UICommon *hub = DMS_UICommon::interface();
    hub->importNewJob(QStringLiteral("/d/web000001/job.tgz|secret=1"), QStringLiteral("web000001"));
    QVERIFY(m_notices->latest().text.contains(QStringLiteral("web000001")));
    QVERIFY(!m_notices->latest().text.contains(QStringLiteral("secret")));
    hub->inputNewJob(QStringLiteral("A1B000002"), QStringLiteral("/d/A1B000002"));
    QVERIFY(m_notices->latest().text.contains(QStringLiteral("A1B000002")));
    hub->sendemitCAMExportJobInfo(QStringLiteral("A1B000003"), 41);
    QVERIFY(m_notices->latest().text.contains(QStringLiteral("41")));
    QCOMPARE(m_notices->rowCount(), 3);
    QCOMPARE(m_handOvers->rowCount(), 3);
}

void HostSessionTest::theCamSideHasAKey()
{
    signIn(QStringLiteral("admin"));
    window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    auto *panel = window().findChild<QDockWidget *>(QStringLiteral("handOverPanel"));
    auto *notices = window().findChild<QDockWidget *>(QStringLiteral("noticePanel"));
    QVERIFY(!panel->isVisible());
    QTest::keyClick(&window(), Qt::Key_F9);
    QVERIFY(panel->isVisible());
    QTest::keyClick(&window(), Qt::Key_F8);
    QVERIFY(notices->isVisible());
    QVERIFY(window().tabifiedDockWidgets(panel).isEmpty()); // both are to be seen
    QTest::keyClick(&window(), Qt::Key_F9);
    QVERIFY(!panel->isVisible());
    QVERIFY(notices->isVisible());
}

void HostSessionTest::panelsComeBackForTheirUserOnly()
{
    const auto panel = [this] {
        return window().findChild<QDockWidget *>(QStringLiteral("handOverPanel"));
    };
    signIn(QStringLiteral("admin"));
    window().addDockWidget(Qt::RightDockWidgetArea, panel());
    panel()->show();
    auto *header =
        panel()->findChild<QTableView *>(QStringLiteral("handOvers"))->horizontalHeader();
    header->resizeSection(4, 233);
    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());

    signIn(QStringLiteral("check-authority"));
    QVERIFY(!panel()->isVisible());
    QCOMPARE(window().dockWidgetArea(panel()), Qt::BottomDockWidgetArea);
    action("switchUserAction").trigger();
    QTRY_VERIFY(!m_session->mainWindow());

    signIn(QStringLiteral("admin"));
    QVERIFY(panel()->isVisible());
    QCOMPARE(window().dockWidgetArea(panel()), Qt::RightDockWidgetArea);
    header = panel()->findChild<QTableView *>(QStringLiteral("handOvers"))->horizontalHeader();
    QCOMPARE(header->sectionSize(4), 233);
    panel()->close();
    window().addDockWidget(Qt::BottomDockWidgetArea, panel());
}

void HostSessionTest::onlyFileKeepersMayTakeIn_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<bool>("may");
    QTest::newRow("administrator") << "admin" << true;
    QTest::newRow("file keeper") << "orig-file-update" << true;
    QTest::newRow("reviewer") << "check-authority" << false;
    QTest::newRow("test administrator") << "test-admin" << false;
    QTest::newRow("ordinary user") << "" << false;
}

void HostSessionTest::onlyFileKeepersMayTakeIn()
{
    QFETCH(QString, role);
    QFETCH(bool, may);
    signIn(role);
    QCOMPARE(action("intakeAction").isEnabled(), may);
    QCOMPARE(window().acceptDrops(), may);
}

void HostSessionTest::everyRoleHasAName()
{
    for (const char *role :
         {"admin", "pre-process", "pre-check-assign", "test-admin", "check-authority",
          "orig-file-update", "orig-file-assign", "show-company-name", "robot"})
        QVERIFY2(StatusFields::roleText(QLatin1String(role)) != QLatin1String(role), role);
    QCOMPARE(StatusFields::roleText(QStringLiteral("new-role")), QStringLiteral("new-role"));
}

void HostSessionTest::aDatabaseThatFailsIsToldAndSurvived()
{
    signIn(QStringLiteral("admin"));
    KODMS::Tests::PlainConnection(m_installation->place())
        .run(QStringLiteral("ALTER TABLE job_flows RENAME TO gone"));
    const int before = m_notices->rowCount();
    for (const char *who : {"^column index: .*job_flows", "^search flows .*job_flows"})
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QLatin1String(who)));
    window().refreshDesks();
    QCOMPARE(m_notices->rowCount(), before + 1);
    QVERIFY(window().isVisible());
    QCOMPARE(jobs().rowCount(), 0);
}

KODMS_TEST_MAIN(HostSessionTest, QApplication)
#include "HostSessionTest.moc"
