// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/SignInWindow.h"
#include "services/api/SignIn.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Host;
using KODMS::Services::SignIn;
using KODMS::Tests::SampleInstallation;

class SignInWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void byKeysAlone();
    void byTheButton();
    void enterInTheLoginGoesToThePassword();
    void emptyFieldsAreAskedFor();
    void aWrongPasswordIsToldAndForgotten();
    void anUnknownUserGetsTheSameAnswer();
    void fiveFailuresDelayFurtherTries();
    void aHostileLoginIsOnlyWrong_data();
    void aHostileLoginIsOnlyWrong();
    void saysThatItIsASample();
    void startsWhereTypingStarts();
    void tabGoesFromFieldToButton();

private:
    QLineEdit &login() { return *m_window->findChild<QLineEdit *>(QStringLiteral("login")); }

    QLineEdit &password() { return *m_window->findChild<QLineEdit *>(QStringLiteral("password")); }

    QString error() { return m_window->findChild<QLabel *>(QStringLiteral("error"))->text(); }

    void type(const QString &loginName, const QString &secret);

    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<SignInWindow> m_window;
    std::unique_ptr<QSignalSpy> m_signedIn;
};

void SignInWindowTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
}

void SignInWindowTest::init()
{
    m_window = std::make_unique<SignInWindow>();
    m_signedIn = std::make_unique<QSignalSpy>(m_window.get(), &SignInWindow::signedIn);
    m_window->prepare(QString());
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void SignInWindowTest::cleanup()
{
    SignIn::signOut();
    m_window.reset();
}

void SignInWindowTest::type(const QString &loginName, const QString &secret)
{
    login().clear();
    password().clear();
    QTest::keyClicks(&login(), loginName);
    QTest::keyClicks(&password(), secret);
}

void SignInWindowTest::byKeysAlone()
{
    const auto account = m_installation->account(QStringLiteral("admin"));
    QTest::keyClicks(QApplication::focusWidget(), account.loginName);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), account.password);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(m_signedIn->size(), 1);
    QCOMPARE(SignIn::current().loginName, account.loginName);
    QVERIFY(error().isEmpty());
    QVERIFY(password().text().isEmpty());
}

void SignInWindowTest::byTheButton()
{
    const auto account = m_installation->account(QString());
    type(QStringLiteral("  ") + account.loginName, account.password);
    QTest::mouseClick(m_window->findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(m_signedIn->size(), 1);
    QVERIFY(SignIn::current().roles.isEmpty());
}

void SignInWindowTest::enterInTheLoginGoesToThePassword()
{
    QTest::keyClicks(&login(), QStringLiteral("admin"));
    QTest::keyClick(&login(), Qt::Key_Enter);
    QVERIFY(password().hasFocus());
    QCOMPARE(m_signedIn->size(), 0);
    QVERIFY(error().isEmpty());
}

void SignInWindowTest::emptyFieldsAreAskedFor()
{
    QTest::keyClick(&password(), Qt::Key_Return);
    QCOMPARE(error(), QStringLiteral("请输入登录名和密码"));
    QVERIFY(login().hasFocus());
    type(QStringLiteral("admin"), QString());
    QTest::keyClick(&password(), Qt::Key_Return);
    QVERIFY(password().hasFocus());
    QCOMPARE(m_signedIn->size(), 0);
}

void SignInWindowTest::aWrongPasswordIsToldAndForgotten()
{
    type(m_installation->account(QStringLiteral("admin")).loginName, QStringLiteral("wrong"));
    QTest::keyClick(&password(), Qt::Key_Return);
    QVERIFY(!error().isEmpty());
    QVERIFY(password().text().isEmpty());
    QVERIFY(password().hasFocus());
    QCOMPARE(m_signedIn->size(), 0);
    QCOMPARE(SignIn::current().id, 0);
}

void SignInWindowTest::anUnknownUserGetsTheSameAnswer()
{
    type(m_installation->account(QStringLiteral("test-admin")).loginName, QStringLiteral("wrong"));
    QTest::keyClick(&password(), Qt::Key_Return);
    const QString forKnown = error();
    type(QStringLiteral("nobody.here"), QStringLiteral("wrong"));
    QTest::keyClick(&password(), Qt::Key_Return);
    QCOMPARE(error(), forKnown);
}

void SignInWindowTest::fiveFailuresDelayFurtherTries()
{
    const auto account = m_installation->account(QStringLiteral("pre-process"));
    QString wrongPassword;
    for (int i = 0; i < 5; ++i) {
        type(account.loginName, QStringLiteral("wrong"));
        QTest::keyClick(&password(), Qt::Key_Return);
        if (i == 0)
            wrongPassword = error();
    }
    type(account.loginName, account.password);
    QTest::keyClick(&password(), Qt::Key_Return);
    QCOMPARE(m_signedIn->size(), 0);
    QVERIFY2(error() != wrongPassword, qPrintable(error()));
    QVERIFY2(error().contains(QRegularExpression(QStringLiteral("[0-9]"))), qPrintable(error()));
    // Others are not kept waiting.
    const auto other = m_installation->account(QStringLiteral("check-authority"));
    type(other.loginName, other.password);
    QTest::keyClick(&password(), Qt::Key_Return);
    QCOMPARE(m_signedIn->size(), 1);
}

void SignInWindowTest::aHostileLoginIsOnlyWrong_data()
{
    QTest::addColumn<QString>("loginName");
    QTest::newRow("quotes") << QStringLiteral("' OR '1'='1");
    QTest::newRow("markup") << QStringLiteral("<img src=x>");
    QTest::newRow("emoji") << QString::fromUtf8("\xf0\x9f\x94\x91");
    QTest::newRow("a line break") << QStringLiteral("admin\nadmin");
}

void SignInWindowTest::aHostileLoginIsOnlyWrong()
{
    QFETCH(QString, loginName);
    login().setText(loginName);
    password().setText(QStringLiteral("x"));
    QTest::keyClick(&password(), Qt::Key_Return);
    QVERIFY(!error().isEmpty());
    QCOMPARE(m_signedIn->size(), 0);
}

void SignInWindowTest::saysThatItIsASample()
{
    QVERIFY(m_window->findChild<QLabel *>(QStringLiteral("sampleBanner"))->isVisible());
    QStringList notes;
    const auto labels = m_window->findChildren<QLabel *>(QStringLiteral("note"));
    for (const QLabel *label : labels)
        notes << label->text();
    const QString all = notes.join(QLatin1Char('\n'));
    QVERIFY2(all.contains(QStringLiteral("accounts.txt")), qPrintable(all));
    QVERIFY2(all.contains(QStringLiteral("kodms.db")), qPrintable(all));
    for (const char *role : {"admin", "check-authority", ""})
        QVERIFY(!all.contains(m_installation->account(QLatin1String(role)).password));
}

void SignInWindowTest::startsWhereTypingStarts()
{
    QVERIFY(login().hasFocus());
    m_window->prepare(QStringLiteral("wang"));
    QVERIFY(password().hasFocus());
    QCOMPARE(login().text(), QStringLiteral("wang"));
}

void SignInWindowTest::tabGoesFromFieldToButton()
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &password());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("primary"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &login());
}

KODMS_TEST_MAIN(SignInWindowTest, QApplication)
#include "SignInWindowTest.moc"
