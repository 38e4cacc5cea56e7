// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/LifeHouse.h"

#include "apps/desk/ApplicationSetup.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/SignInWindow.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "tests/e2e/life/People.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLineEdit>
#include <QTest>

namespace KODMS::Tests {

namespace {

/// A page of flows in front of which the lives of this house happen.
constexpr int EarlierFlows = 40;
constexpr int PatienceMs = 60000;

/// Keys go to the window that is active; a platform without a screen makes none so by itself
/// when the one in front closes.
void bringForward(QWidget &window)
{
    window.activateWindow();
    QApplication::setActiveWindow(&window);
    if (!QTest::qWaitForWindowActive(&window, PatienceMs))
        qFatal("%s does not come to the front", qPrintable(window.windowTitle()));
}

} // namespace

LifeHouse::LifeHouse()
    : m_sample(EarlierFlows),
      m_robot(m_sample, {QStringLiteral("--seconds"), QStringLiteral("0.2")})
{
    Host::ApplicationSetup::after(*qApp, QStringLiteral("zh"));
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    for (const Services::NewUser &person : People::all())
        m_sample.addAccount(person);
    m_sample.moveRobotTo(m_robot.port());
    auto *hub = UI::DMS_UICommon::interface();
    connect(hub, &UI::DMS_UICommon::serviceNotice, &m_notices, &Host::NoticeLog::add);
    connect(hub, &UI::DMS_UICommon::serviceNotice, this, [this](int level, const QString &text) {
        if (level > 0)
            m_complaints << text;
    });
    m_preferences =
        std::make_unique<Host::Preferences>(Host::Preferences::fileBeside(m_sample.configPath()));
    m_session = std::make_unique<Host::HostSession>(*m_preferences, m_notices, m_handOvers);
    m_session->showSignIn();
}

LifeHouse::~LifeHouse()
{
    m_session.reset();
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void LifeHouse::openUrl(const QUrl &url)
{
    m_opened = url;
}

Host::MainWindow &LifeHouse::enter(const Services::NewUser &person)
{
    const bool isOther = Services::SignIn::current().loginName != person.loginName;
    if (m_session->mainWindow() && isOther)
        leave();
    if (!m_session->mainWindow())
        signIn(person);
    bringForward(*m_session->mainWindow());
    return *m_session->mainWindow();
}

void LifeHouse::leave()
{
    bringForward(*m_session->mainWindow());
    QTest::keyClick(m_session->mainWindow(), Qt::Key_U, Qt::ControlModifier);
    if (!QTest::qWaitFor([this] { return !m_session->mainWindow(); }, PatienceMs))
        qFatal("the last user stays");
}

void LifeHouse::signIn(const Services::NewUser &person)
{
    Host::SignInWindow *window = m_session->showSignIn();
    auto *login = window->findChild<QLineEdit *>(QStringLiteral("login"));
    QTest::keySequence(login, QKeySequence::SelectAll);
    QTest::keyClicks(login, person.loginName);
    auto *password = window->findChild<QLineEdit *>(QStringLiteral("password"));
    QTest::keyClicks(password, person.password);
    QTest::keyClick(password, Qt::Key_Return);
    if (!m_session->mainWindow())
        qFatal("%s cannot sign in", qPrintable(person.loginName));
    m_session->mainWindow()->resize(1360, 900);
}

QString LifeHouse::robotName() const
{
    return records().text(QStringLiteral("SELECT u.real_name FROM users u JOIN user_roles r ON "
                                         "r.user_id = u.id WHERE r.role = 'robot'"));
}

QStringList LifeHouse::takeNotices()
{
    QStringList complaints;
    complaints.swap(m_complaints);
    return complaints;
}

QStringList LifeHouse::handOvers() const
{
    QStringList lines;
    for (int row = 0; row < m_handOvers.rowCount(); ++row) {
        const auto one = m_handOvers.at(row);
        lines << Host::HandOverLog::kindText(one.kind) + QLatin1Char(' ') + one.jobName +
                     QLatin1Char(' ') + one.path;
    }
    return lines;
}

} // namespace KODMS::Tests
