// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/NoticeLog.h"
#include "apps/desk/NoticePanel.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace KODMS::Host;

class NoticeLogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNewestStandsFirst();
    void unreadCountsUntilLookedAt();
    void keepsTheLastThousand();
    void clearForgetsAll();
    void aStrangeLevelIsBounded();
    void markupInANoticeStaysText();
    void showingThePanelReads();
    void whatArrivesInAnOpenPanelIsRead();
    void copiesAllOrTheSelection();
    void buttonsWaitForANotice();
};

namespace {

QString cell(const NoticeLog &log, int row, int column)
{
    return log.index(row, column).data().toString();
}

} // namespace

void NoticeLogTest::theNewestStandsFirst()
{
    NoticeLog log;
    const QAbstractItemModelTester tester(&log);
    log.add(0, QStringLiteral("one"));
    log.add(2, QStringLiteral("two"));
    QCOMPARE(log.rowCount(), 2);
    QCOMPARE(cell(log, 0, NoticeLog::TextColumn), QStringLiteral("two"));
    QCOMPARE(cell(log, 0, NoticeLog::LevelColumn), QStringLiteral("错误"));
    QCOMPARE(cell(log, 1, NoticeLog::LevelColumn), QStringLiteral("信息"));
    QCOMPARE(log.latest().text, QStringLiteral("two"));
    const QDateTime shown = QDateTime::fromString(cell(log, 0, NoticeLog::TimeColumn),
                                                  QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY(qAbs(shown.secsTo(QDateTime::currentDateTime())) <= 2);
}

void NoticeLogTest::unreadCountsUntilLookedAt()
{
    NoticeLog log;
    const QSignalSpy spy(&log, &NoticeLog::unreadChanged);
    log.add(0, QStringLiteral("a"));
    log.add(0, QStringLiteral("b"));
    QCOMPARE(log.unread(), 2);
    log.markRead();
    QCOMPARE(log.unread(), 0);
    log.markRead();
    QCOMPARE(spy.size(), 3);
}

void NoticeLogTest::keepsTheLastThousand()
{
    NoticeLog log;
    for (int i = 0; i < 1005; ++i)
        log.add(1, QString::number(i));
    QCOMPARE(log.rowCount(), 1000);
    QCOMPARE(cell(log, 0, NoticeLog::TextColumn), QStringLiteral("1004"));
    QCOMPARE(cell(log, 999, NoticeLog::TextColumn), QStringLiteral("5"));
}

void NoticeLogTest::clearForgetsAll()
{
    NoticeLog log;
    log.add(1, QStringLiteral("a"));
    log.clear();
    QCOMPARE(log.rowCount(), 0);
    QCOMPARE(log.unread(), 0);
    QVERIFY(log.latest().text.isEmpty());
}

void NoticeLogTest::aStrangeLevelIsBounded()
{
    NoticeLog log;
    log.add(-7, QStringLiteral("low"));
    log.add(99, QStringLiteral("high"));
    QCOMPARE(cell(log, 0, NoticeLog::LevelColumn), QStringLiteral("错误"));
    QCOMPARE(cell(log, 1, NoticeLog::LevelColumn), QStringLiteral("信息"));
}

void NoticeLogTest::markupInANoticeStaysText()
{
    NoticeLog log;
    log.add(2, QStringLiteral("<b>job</b><img src=x>"));
    const QString tip = log.index(0, NoticeLog::TextColumn).data(Qt::ToolTipRole).toString();
    QVERIFY2(!tip.contains(QStringLiteral("<img")), qPrintable(tip));
    QVERIFY(tip.contains(QStringLiteral("&lt;img")));
}

void NoticeLogTest::showingThePanelReads()
{
    NoticeLog log;
    log.add(0, QStringLiteral("a"));
    QMainWindow window;
    auto *panel = new NoticePanel(log, &window);
    window.addDockWidget(Qt::BottomDockWidgetArea, panel);
    panel->hide();
    window.show();
    QCOMPARE(log.unread(), 1);
    panel->show();
    QCOMPARE(log.unread(), 0);
}

void NoticeLogTest::whatArrivesInAnOpenPanelIsRead()
{
    NoticeLog log;
    QMainWindow window;
    window.addDockWidget(Qt::BottomDockWidgetArea, new NoticePanel(log, &window));
    window.show();
    log.add(2, QStringLiteral("a"));
    QCOMPARE(log.unread(), 0);
}

void NoticeLogTest::copiesAllOrTheSelection()
{
    NoticeLog log;
    log.add(0, QStringLiteral("first"));
    log.add(1, QStringLiteral("second"));
    QMainWindow window;
    auto *panel = new NoticePanel(log, &window);
    panel->copy();
    QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first().endsWith(QStringLiteral("\t警告\tsecond")));
    panel->findChild<QTableView *>(QStringLiteral("notices"))->selectRow(1);
    QTest::mouseClick(panel->findChild<QPushButton *>(QStringLiteral("copyNotices")),
                      Qt::LeftButton);
    lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.first().endsWith(QStringLiteral("\t信息\tfirst")));
}

void NoticeLogTest::buttonsWaitForANotice()
{
    NoticeLog log;
    QMainWindow window;
    auto *panel = new NoticePanel(log, &window);
    auto *clear = panel->findChild<QPushButton *>(QStringLiteral("clearNotices"));
    QVERIFY(!clear->isEnabled());
    log.add(0, QStringLiteral("a"));
    QVERIFY(clear->isEnabled());
    clear->click();
    QCOMPARE(log.rowCount(), 0);
    QVERIFY(!clear->isEnabled());
}

KODMS_TEST_MAIN(NoticeLogTest, QApplication)
#include "NoticeLogTest.moc"
