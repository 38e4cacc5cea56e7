// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverLog.h"
#include "apps/desk/HostSession.h"
#include "apps/desk/IntakeDialog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/SignInWindow.h"
#include "desks/download/DMS_Download_Widget.h"
#include "desks/export/DMS_Export_Widget.h"
#include "services/api/SignIn.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::SignIn;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_Export_Widget;

/// The first hour with the host, by keys, clicks and drops on its windows.
class NewcomerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void whatIsDroppedOnTheWindowBecomesAJob_data();
    void whatIsDroppedOnTheWindowBecomesAJob();
    void anotherUserTakesOverByKeys();

private:
    void signInByKeys(const QString &role);
    QString makeSent(const QString &kind);
    void dropOnWindow(const QString &path);
    QString takeIn(const QString &code, const QString &customerName);

    MainWindow &window() { return *m_session->mainWindow(); }

    /// In the first row of the desk.
    template <typename Desk> QString shown(int column)
    {
        const auto *desk = window().findChild<Desk *>();
        const auto *table =
            desk->template findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
        const QTableWidgetItem *item = table->item(0, column);
        return item ? item->text() : QString();
    }

    QTemporaryDir m_sent;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<NoticeLog> m_notices;
    std::unique_ptr<HandOverLog> m_handOvers;
    std::unique_ptr<HostSession> m_session;
};

void NewcomerTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    m_preferences =
        std::make_unique<Preferences>(Preferences::fileBeside(m_installation->configPath()));
}

void NewcomerTest::init()
{
    m_notices = std::make_unique<NoticeLog>();
    m_handOvers = std::make_unique<HandOverLog>();
    m_session = std::make_unique<HostSession>(*m_preferences, *m_notices, *m_handOvers);
    m_session->showSignIn();
    signInByKeys(QStringLiteral("admin"));
    QVERIFY(m_session->mainWindow());
}

void NewcomerTest::cleanup()
{
    m_session.reset();
    m_notices.reset();
    m_handOvers.reset();
    SignIn::signOut();
}

/// Types the name over whatever stands in its field.
void NewcomerTest::signInByKeys(const QString &role)
{
    const auto account = m_installation->account(role);
    QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<SignInWindow *>(QApplication::activeWindow()), 20000);
    const QWidget *signIn = QApplication::activeWindow();
    auto *login = signIn->findChild<QLineEdit *>(QStringLiteral("login"));
    if (!login->hasFocus())
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    login->selectAll();
    QTest::keyClicks(login, account.loginName);
    QTest::keyClick(login, Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), account.password);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

QString NewcomerTest::makeSent(const QString &kind)
{
    const QString path = m_sent.filePath(QStringLiteral("板🚀") + kind);
    const QByteArray zip = rawZip({{"top.gbr", "G04"}});
    const QByteArray tgz = gzipped(rawTar({{"job/matrix/matrix", "STEP"}}));
    if (kind.isEmpty())
        return writeFile(path + QStringLiteral("/top.gbr"), "G04") ? path : QString();
    return writeFile(path, kind == QLatin1String(".tgz") ? tgz : zip) ? path : QString();
}

void NewcomerTest::dropOnWindow(const QString &path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &drop);
}

/// Fills the dialog that the drop opens, and returns the job's name from its receipt.
QString NewcomerTest::takeIn(const QString &code, const QString &customerName)
{
    QString jobName;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<IntakeDialog *>(QApplication::activeModalWidget());
        if (!dialog || !jobName.isEmpty())
            return;
        watch.stop();
        const auto field = [dialog](const char *name) {
            return dialog->findChild<QLineEdit *>(QLatin1String(name));
        };
        QTest::keyClicks(field("customerCode"), code);
        field("customerName")->setFocus();
        QInputMethodEvent typed; // not every character has a key
        typed.setCommitString(customerName);
        QCoreApplication::sendEvent(field("customerName"), &typed);
        QTest::keyClick(field("customerName"), Qt::Key_Return);
        jobName = dialog->findChild<QLabel *>(QStringLiteral("receiptJobName"))->text();
        if (jobName.isEmpty())
            jobName = dialog->findChild<QLabel *>(QStringLiteral("error"))->text();
        dialog->reject();
    });
    watch.start(20);
    for (int round = 0; round < 500 && jobName.isEmpty(); ++round)
        QTest::qWait(20);
    return jobName;
}

void NewcomerTest::whatIsDroppedOnTheWindowBecomesAJob_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("customer");
    QTest::addColumn<QString>("shownType");
    QTest::newRow("tgz, emoji in the name") << ".tgz"
                                            << "T01" << QStringLiteral("华虹🚀👩\u200d🔧") << "tgz";
    QTest::newRow("folder, marks of direction")
        << ""
        << "F01" << QStringLiteral("\u200fשלום\u200e 电子") << "file";
    QTest::newRow("kos") << ".kos"
                         << "K01" << QStringLiteral("Ω & <b>b</b>") << "kos";
    QTest::newRow("zip") << ".zip"
                         << "Z01" << QStringLiteral("O'Neil \"x\" %_\\") << "zip";
}

void NewcomerTest::whatIsDroppedOnTheWindowBecomesAJob()
{
    QFETCH(QString, kind);
    QFETCH(QString, code);
    QFETCH(QString, customer);
    QFETCH(QString, shownType);
    const QString sent = makeSent(kind);
    QVERIFY(!sent.isEmpty());
    dropOnWindow(sent);
    QCOMPARE(takeIn(code, customer), code + QStringLiteral("000001"));
    QTRY_COMPARE_WITH_TIMEOUT(shown<DMS_Export_Widget>(1), code + QStringLiteral("000001"), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(shown<DMS_Download_Widget>(2), code, 20000);
    QCOMPARE(shown<DMS_Download_Widget>(0), QStringLiteral("板🚀"));
    QCOMPARE(shown<DMS_Download_Widget>(1), customer);
    QCOMPARE(shown<DMS_Download_Widget>(3), shownType);
}

void NewcomerTest::anotherUserTakesOverByKeys()
{
    window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
    QTest::keyClick(&window(), Qt::Key_U, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(!m_session->mainWindow(), 20000);
    QCOMPARE(SignIn::current().id, 0);
    QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<SignInWindow *>(QApplication::activeWindow()), 20000);
    const auto *login =
        QApplication::activeWindow()->findChild<QLineEdit *>(QStringLiteral("login"));
    QVERIFY2(login->hasFocus(), "another user begins with their name");
    QCOMPARE(login->selectedText(), m_installation->account(QStringLiteral("admin")).loginName);
    signInByKeys(QStringLiteral("check-authority"));
    QVERIFY(m_session->mainWindow());
    QCOMPARE(SignIn::current().roles, QStringList{QStringLiteral("check-authority")});
}

KODMS_TEST_MAIN(NewcomerTest, QApplication)
#include "NewcomerTest.moc"
