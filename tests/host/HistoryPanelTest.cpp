// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HistoryPanel.h"

#include "apps/desk/HandOverLog.h"
#include "apps/desk/HistoryWords.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SampleData.h"
#include "services/api/SignIn.h"
#include "services/notices/Progress.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::HistoryEntry;
using KODMS::Services::SignIn;

/// Beside the desks: what happened to the job that is selected in the one in front.
class HistoryPanelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aKeyShowsTheSelectedJob();
    void aRemarkIsToldAtOnce();
    void aRefreshKeepsTheJobInHand();
    void bothDesksHaveTheirJob();
    void itIsCopied();
    void wordsForPeople_data();
    void wordsForPeople();

private:
    QTableWidget &jobs() const
    {
        const auto tables =
            m_window->findChildren<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
        for (QTableWidget *table : tables) {
            if (table->isVisible())
                return *table;
        }
        qFatal("no desk is in front");
    }

    QTableView &history() const
    {
        return *m_window->findChild<QTableView *>(QStringLiteral("history"));
    }

    QString title() const
    {
        return m_window->findChild<QLabel *>(QStringLiteral("historyTitle"))->text();
    }

    QString told(int row, int column) const
    {
        return history().model()->index(row, column).data().toString();
    }

    void openPanel()
    {
        QTest::keyClick(m_window.get(), Qt::Key_F7);
        QTRY_VERIFY(history().isVisible());
    }

    QTemporaryDir m_dir;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<NoticeLog> m_notices;
    std::unique_ptr<HandOverLog> m_handOvers;
    std::unique_ptr<MainWindow> m_window;
};

void HistoryPanelTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    KODMS::Services::NoProgress progress;
    KODMS::Services::SampleRequest request;
    request.flows = 40;
    QVERIFY(KODMS::Services::SampleData::generate(request, progress).ok);
    m_preferences = std::make_unique<Preferences>(m_dir.filePath(QStringLiteral("desk.ini")));
}

void HistoryPanelTest::init()
{
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    m_notices = std::make_unique<NoticeLog>();
    m_handOvers = std::make_unique<HandOverLog>();
    m_window = std::make_unique<MainWindow>(*m_preferences, *m_notices, *m_handOvers);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void HistoryPanelTest::cleanup()
{
    m_window.reset();
    SignIn::signOut();
}

void HistoryPanelTest::aKeyShowsTheSelectedJob()
{
    openPanel();
    QVERIFY(!title().contains(jobs().item(3, 1)->text()));
    jobs().setCurrentCell(3, 1);
    QTRY_VERIFY(title().contains(jobs().item(3, 1)->text()));
    jobs().setCurrentCell(5, 1);
    QTRY_VERIFY(title().contains(jobs().item(5, 1)->text()));
    QTest::keyClick(m_window.get(), Qt::Key_F7);
    QTRY_VERIFY(!history().isVisible());
}

void HistoryPanelTest::aRemarkIsToldAtOnce()
{
    const QAbstractItemModelTester tester(history().model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    openPanel();
    jobs().setCurrentCell(2, 1);
    QTRY_VERIFY(title().contains(jobs().item(2, 1)->text()));
    jobs().item(2, 12)->setText(QStringLiteral("加急")); // as typing into the cell does
    QTRY_COMPARE(told(0, HistoryLog::ActionColumn), QStringLiteral("修改备注"));
    QVERIFY(told(0, HistoryLog::ContentColumn).endsWith(QStringLiteral("加急")));
    QCOMPARE(told(0, HistoryLog::WhoColumn), SignIn::current().realName);
}

void HistoryPanelTest::aRefreshKeepsTheJobInHand()
{
    openPanel();
    jobs().setCurrentCell(4, 1);
    const QString job = jobs().item(4, 1)->text();
    const QString guid = jobs().item(4, 8)->text();
    QTRY_VERIFY(title().contains(job));
    QVERIFY(KODMS::DataLib::BLL::Odbpp_JobFlowBll().UpdateTips(
        SignIn::current().id, "by somebody else", guid.toStdString()));
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QTRY_VERIFY(told(0, HistoryLog::ContentColumn).contains(QStringLiteral("by somebody else")));
    QVERIFY(title().contains(job));
}

void HistoryPanelTest::bothDesksHaveTheirJob()
{
    openPanel();
    auto *tabs = m_window->findChild<QTabWidget *>(QStringLiteral("deskTabs"));
    tabs->setCurrentIndex(1);
    QTRY_VERIFY(jobs().rowCount() > 1);
    jobs().setCurrentCell(1, 0);
    const QString job =
        jobs().item(1, 2)->text() + jobs().item(1, 4)->text(); // customer and number
    QTRY_VERIFY2(title().contains(job, Qt::CaseInsensitive), qPrintable(title() + job));
}

void HistoryPanelTest::itIsCopied()
{
    openPanel();
    jobs().setCurrentCell(2, 1);
    QTRY_VERIFY(history().model()->rowCount() > 0);
    m_window->findChild<QPushButton *>(QStringLiteral("copyHistory"))->click();
    QVERIFY(QGuiApplication::clipboard()->text().contains(QStringLiteral("修改备注")));
}

void HistoryPanelTest::wordsForPeople_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("content");
    const auto row = [](const char *action, const char *before, const char *after, const char *word,
                        const char *content) {
        QTest::newRow(action) << QString::fromUtf8(action) << QString::fromUtf8(before)
                              << QString::fromUtf8(after) << QString::fromUtf8(word)
                              << QString::fromUtf8(content);
    };
    row("intake.take", "", "abc.zip", "接收客户文件", "abc.zip");
    row("order.pay", "unpaid", "paid", "订单付款", "未付款 → 已付款");
    row("assignment.AssignOrigFile", "", "张伟", "指派前处理人", "张伟");
    row("state.UpdateState", "1,0", "1,2", "更改状态", "前处理待审核 → 前处理通过");
    row("state.UpdateCheckFlag", "0,0", "0,2", "保存审核结果", "未审核 → 通过");
    row("state.UpdatePreImportOrCheckTime", "3 2026-01-02 03:04:05", "3 2026-01-02T03:04:05.678Z",
        "记录时间", "2026-01-02 03:04:05 → 2026-01-02 11:04:05");
    row("file.UpdateZipUUID_OrigName", "a", "b", "更改原始料名", "a → b");
    row("file.importJob", "a.tgz", "b.tgz", "保存导入的料号", "a.tgz → b.tgz");
    row("state.kodms_update_flow_status", "2,2", "3,2", "完成流程", "机器人通过 → 流程完成");
    row("remark.UpdateTips", "a", "b", "修改备注", "a → b");
    row("question.raise", "", "A1B000001\nlayer 3", "创建问题", "layer 3");
    row("question.answer", "1", "2", "回复问题", "1 → 2"); // what somebody wrote, no states
    row("question.Unheard", "", "free text", "问题", "free text");
    row("else.entirely", "", "x", "else.entirely", "x");
}

void HistoryPanelTest::wordsForPeople()
{
    HistoryEntry entry;
    QFETCH(QString, action);
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, word);
    entry.action = action;
    entry.before = before;
    entry.after = after;
    QTEST(HistoryWords::action(entry), "word");
    QTEST(HistoryWords::content(entry), "content");
    entry.isRefused = true;
    QVERIFY(HistoryWords::action(entry).startsWith(word));
    QVERIFY(HistoryWords::action(entry) != word);
}

KODMS_TEST_MAIN(HistoryPanelTest, QApplication)
#include "HistoryPanelTest.moc"
