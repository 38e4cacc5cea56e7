// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ElidedLabel.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/LiveChanges.h"
#include "services/api/SampleData.h"
#include "services/api/SignIn.h"
#include "services/notices/Progress.h"
#include "tests/host/OwnServer.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include <csignal>
#include <memory>
#include <thread>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::LiveChanges;
using KODMS::UI::DMS_UICommon;

namespace {

constexpr int patience = 60'000;
constexpr int remarkColumn = 12;
constexpr int jobColumn = 1;

const OwnServer *server = nullptr;
QtMessageHandler usualHandler = nullptr;

/// The driver's own socket is closed under its watcher, which says so when it gets there first.
void withoutClosedSockets(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("QSocketNotifier: Invalid socket")))
        usualHandler(type, context, text);
}

} // namespace

/// The server is killed and started again while somebody works at the host, which goes on.
class ServerLossTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void whatFollowsARestartWorks_data();
    void whatFollowsARestartWorks();
    void anIdleDeskOutlivesIt();
    void anActionWithoutAServerIsTold();
    void anActionThatIsCutOffIsTold();
    void changesOfOthersAreStillNoticed();
    void aWatchWaitsForNoServer();
    void anIdleDeskSaysThatTheServerIsAway();
    void theEndOfWhatWasToldIsTold();

private:
    QTableWidget &jobs() const
    {
        return *m_window->findChild<QTabWidget *>(QStringLiteral("deskTabs"))
                    ->currentWidget()
                    ->findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
    }

    void search(const QString &text) const;
    void remark(const QString &text);
    void expectAllRemarks() const;

    QLabel &outage() const { return *m_window->findChild<QLabel *>(QStringLiteral("outageField")); }

    QString latestNotice() const
    {
        return m_window->findChild<ElidedLabel *>(QStringLiteral("latestNotice"))->fullText();
    }

    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    NoticeLog m_notices;
    HandOverLog m_handOvers;
    std::unique_ptr<MainWindow> m_window;
    QString m_job;
    QStringList m_acknowledged;
};

void ServerLossTest::initTestCase()
{
    connect(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice, &m_notices, &NoticeLog::add);
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    KODMS::Services::NoProgress progress;
    KODMS::Services::SampleRequest request;
    request.flows = 100;
    QVERIFY(KODMS::Services::SampleData::generate(request, progress));
    m_preferences =
        std::make_unique<Preferences>(Preferences::fileBeside(m_installation->configPath()));
    m_window = std::make_unique<MainWindow>(*m_preferences, m_notices, m_handOvers);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_job = jobs().item(0, jobColumn)->text();
}

void ServerLossTest::cleanupTestCase()
{
    m_window.reset();
    m_installation.reset();
}

/// Looks of their own would come between an action and its end.
void ServerLossTest::init()
{
    LiveChanges::instance().setWatched(false);
    search(m_job);
    QVERIFY(jobs().rowCount() > 0);
}

void ServerLossTest::search(const QString &text) const
{
    auto *field = jobs().window()->findChild<QLineEdit *>(QStringLiteral("m_pJobFilterLE"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
}

/// Typed into the first row's cell.
void ServerLossTest::remark(const QString &text)
{
    QTableWidget &table = jobs();
    table.setCurrentCell(0, remarkColumn);
    table.editItem(table.item(0, remarkColumn));
    auto *editor = table.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::qWait(1); // the editor is gone
}

/// Each that was not refused has its event, and the last one stands.
void ServerLossTest::expectAllRemarks() const
{
    const PlainConnection plain(m_installation->place());
    const QStringList written = plain.texts(
        QStringLiteral("SELECT after_value FROM events WHERE action = 'remark.UpdateTips' AND "
                       "refused = 0 ORDER BY id"));
    QCOMPARE(written, m_acknowledged);
    QCOMPARE(
        plain.texts(QStringLiteral("SELECT tips FROM job_flows WHERE job_name = '%1'").arg(m_job)),
        m_acknowledged.mid(m_acknowledged.size() - 1));
}

void ServerLossTest::whatFollowsARestartWorks_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("stopped at once") << SIGQUIT;
}

void ServerLossTest::whatFollowsARestartWorks()
{
    QFETCH(int, signal);
    remark(QStringLiteral("before %1").arg(signal));
    m_acknowledged << QStringLiteral("before %1").arg(signal);
    server->kill(signal);
    server->resume();
    const int notices = m_notices.rowCount();
    search(m_job.left(3));
    QVERIFY(jobs().rowCount() > 0);
    search(m_job);
    QCOMPARE(jobs().item(0, jobColumn)->text(), m_job);
    expectAllRemarks();
    server->kill(signal);
    server->resume();
    remark(QStringLiteral("after %1").arg(signal));
    m_acknowledged << QStringLiteral("after %1").arg(signal);
    QCOMPARE(m_notices.rowCount(), notices);
    expectAllRemarks();
}

/// The end of the connection is seen while nobody does anything.
void ServerLossTest::anIdleDeskOutlivesIt()
{
    usualHandler = qInstallMessageHandler(withoutClosedSockets);
    server->kill(SIGKILL);
    QTest::qWait(300);
    server->resume();
    QTest::qWait(300);
    qInstallMessageHandler(usualHandler);
    const int notices = m_notices.rowCount();
    remark(QStringLiteral("after a rest"));
    m_acknowledged << QStringLiteral("after a rest");
    QCOMPARE(m_notices.rowCount(), notices);
    expectAllRemarks();
}

void ServerLossTest::anActionWithoutAServerIsTold()
{
    server->kill(SIGQUIT);
    const int notices = m_notices.rowCount();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("remark.UpdateTips")));
    QElapsedTimer timer;
    timer.start();
    remark(QStringLiteral("into the void"));
    qInfo() << "given up after" << timer.elapsed() << "ms";
    QCOMPARE(m_notices.rowCount(), notices + 1);
    server->resume();
    timer.start();
    search(m_job);
    QVERIFY(jobs().rowCount() > 0);
    qInfo() << "works again after" << timer.elapsed() << "ms";
    remark(QStringLiteral("here again"));
    m_acknowledged << QStringLiteral("here again");
    expectAllRemarks();
}

/// It waits for another writer, so that the server is surely killed in its middle.
void ServerLossTest::anActionThatIsCutOffIsTold()
{
    constexpr int writersLock = 20261121;
    const PlainConnection writer(m_installation->place());
    writer.run(QStringLiteral("SELECT pg_advisory_lock(%1)").arg(writersLock));
    const int notices = m_notices.rowCount();
    std::thread killer([this] {
        PlainConnection(m_installation->place()).awaitWaitingWriter();
        server->kill(SIGKILL);
        server->resume();
    });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("remark.UpdateTips")));
    remark(QStringLiteral("cut off"));
    killer.join();
    QCOMPARE(m_notices.rowCount(), notices + 1);
    search(m_job);
    QVERIFY(jobs().rowCount() > 0);
    remark(QStringLiteral("and on"));
    m_acknowledged << QStringLiteral("and on");
    expectAllRemarks();
}

void ServerLossTest::changesOfOthersAreStillNoticed()
{
    auto *field = m_window->findChild<QToolButton *>(QStringLiteral("foreignChanges"));
    LiveChanges::instance().setWatched(true);
    QVERIFY(!field->isVisible());
    server->kill(SIGKILL);
    server->resume();
    search(m_job); // the connection is made anew
    const PlainConnection plain(m_installation->place());
    plain.run(QStringLiteral("UPDATE job_flows SET tips = 'by another' WHERE job_name = '%1'")
                  .arg(m_job));
    QTRY_VERIFY_WITH_TIMEOUT(field->isVisible(), patience);
    m_window->refreshDesks();
    QVERIFY(!field->isVisible());
    QCOMPARE(jobs().item(0, remarkColumn)->text(), QStringLiteral("by another"));
}

/// Nobody has asked for anything, so nobody waits; and the count goes on by itself.
void ServerLossTest::aWatchWaitsForNoServer()
{
    constexpr int longestReopening = 4000;
    LiveChanges::instance().setWatched(false);
    const PlainConnection plain(m_installation->place());
    plain.run(
        QStringLiteral("UPDATE job_flows SET tips = 'before' WHERE job_name = '%1'").arg(m_job));
    usualHandler = qInstallMessageHandler(withoutClosedSockets);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others")));
    server->kill(SIGKILL);
    QElapsedTimer timer;
    timer.start();
    const auto hasSeenIt = [] { // looks at once; the server's processes outlive it by a moment
        LiveChanges::instance().setWatched(false);
        LiveChanges::instance().setWatched(true);
        return LiveChanges::instance().hasFailed();
    };
    QTRY_VERIFY(hasSeenIt());
    QVERIFY(timer.elapsed() < longestReopening);
    server->resume();
    auto *field = m_window->findChild<QToolButton *>(QStringLiteral("foreignChanges"));
    QTRY_VERIFY_WITH_TIMEOUT(field->isVisible(), patience);
    qInstallMessageHandler(usualHandler);
    QVERIFY(!LiveChanges::instance().hasFailed());
    QCOMPARE(jobs().item(0, remarkColumn)->text(), QStringLiteral("by another"));
    m_window->refreshDesks();
    QCOMPARE(jobs().item(0, remarkColumn)->text(), QStringLiteral("before"));
}

/// And says no more of it when the server is back.
void ServerLossTest::anIdleDeskSaysThatTheServerIsAway()
{
    const int notices = m_notices.rowCount();
    LiveChanges::instance().setWatched(true);
    QVERIFY(!outage().isVisible());
    usualHandler = qInstallMessageHandler(withoutClosedSockets);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others")));
    server->kill(SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(outage().isVisible(), patience);
    server->resume();
    QTRY_VERIFY_WITH_TIMEOUT(!outage().isVisible(), patience);
    qInstallMessageHandler(usualHandler);
    QCOMPARE(m_notices.rowCount(), notices);
}

/// The status bar does not stay with an error that is over, whoever finds that out.
void ServerLossTest::theEndOfWhatWasToldIsTold()
{
    LiveChanges::instance().setWatched(true);
    usualHandler = qInstallMessageHandler(withoutClosedSockets);
    server->kill(SIGQUIT);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("remark.UpdateTips")));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others")));
    remark(QStringLiteral("into the void"));
    const QString error = latestNotice();
    QVERIFY(!error.isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(outage().isVisible(), patience);
    QCOMPARE(latestNotice(), error);
    server->resume();
    search(m_job);
    QVERIFY(jobs().rowCount() > 0);
    QTRY_VERIFY_WITH_TIMEOUT(!outage().isVisible(), patience);
    qInstallMessageHandler(usualHandler);
    QCOMPARE(latestNotice(), QStringLiteral("数据库恢复可用"));
}

int main(int argc, char **argv)
{
    const OwnServer own;
    server = &own;
    prepareEnvironment();
    QApplication app(argc, argv);
    ServerLossTest test;
    return runTests(&test, QCoreApplication::arguments());
}

#include "ServerLossTest.moc"
