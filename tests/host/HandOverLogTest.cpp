// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverLog.h"
#include "apps/desk/CamRelay.h"
#include "apps/desk/HandOverFolder.h"
#include "apps/desk/NoticeLog.h"
#include "foundation/ui/DMS_UICommon.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Host;
using KODMS::UI::DMS_UICommon;

class HandOverLogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyKindIsListed();
    void theParametersAreWhatFollowsTheFirstBar();
    void keepsTheLastThousand();
    void clearForgetsAll();
    void nothingForgesALine_data();
    void nothingForgesALine();
    void markupStaysText();
    void theFolderOfAHandOver_data();
    void theFolderOfAHandOver();
};

namespace {

QString cell(const HandOverLog &log, int row, int column)
{
    return log.index(row, column).data().toString();
}

} // namespace

void HandOverLogTest::everyKindIsListed()
{
    HandOverLog log;
    NoticeLog notices;
    const QAbstractItemModelTester tester(&log);
    const CamRelay relay(notices, log);
    DMS_UICommon *hub = DMS_UICommon::interface();
    hub->importNewJob(QStringLiteral("/d/web1/job.tgz|secret=1"), QStringLiteral("web1"));
    hub->inputNewJob(QStringLiteral("A1B2"), QStringLiteral("/d/A1B2"));
    hub->sendemitCAMExportJobInfo(QStringLiteral("A1B3"), 41);
    QCOMPARE(log.rowCount(), 3);
    QCOMPARE(cell(log, 0, HandOverLog::KindColumn), QStringLiteral("导出"));
    QCOMPARE(cell(log, 0, HandOverLog::JobColumn), QStringLiteral("A1B3"));
    QCOMPARE(cell(log, 0, HandOverLog::PathColumn), QString());
    QVERIFY(cell(log, 0, HandOverLog::ParametersColumn).contains(QStringLiteral("41")));
    QCOMPARE(cell(log, 1, HandOverLog::KindColumn), QStringLiteral("读入"));
    QCOMPARE(cell(log, 1, HandOverLog::PathColumn),
             QDir::toNativeSeparators(QStringLiteral("/d/A1B2")));
    QCOMPARE(cell(log, 2, HandOverLog::KindColumn), QStringLiteral("导入"));
    QCOMPARE(cell(log, 2, HandOverLog::JobColumn), QStringLiteral("web1"));
    QCOMPARE(cell(log, 2, HandOverLog::ParametersColumn), QStringLiteral("secret=1"));
    const QDateTime shown = QDateTime::fromString(cell(log, 2, HandOverLog::TimeColumn),
                                                  QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY(qAbs(shown.secsTo(QDateTime::currentDateTime())) <= 5);
}

void HandOverLogTest::theParametersAreWhatFollowsTheFirstBar()
{
    HandOverLog log;
    log.addInput(QStringLiteral("a"), QStringLiteral("/d/a|x=1|y=2"));
    QCOMPARE(log.at(0).path, QStringLiteral("/d/a"));
    QCOMPARE(log.at(0).parameters, QStringLiteral("x=1|y=2"));
}

void HandOverLogTest::keepsTheLastThousand()
{
    HandOverLog log;
    for (int i = 0; i < 1005; ++i)
        log.addExport(QString::number(i), i);
    QCOMPARE(log.rowCount(), 1000);
    QCOMPARE(cell(log, 0, HandOverLog::JobColumn), QStringLiteral("1004"));
    QCOMPARE(cell(log, 999, HandOverLog::JobColumn), QStringLiteral("5"));
}

void HandOverLogTest::clearForgetsAll()
{
    HandOverLog log;
    log.addExport(QStringLiteral("a"), 1);
    log.clear();
    QCOMPARE(log.rowCount(), 0);
    QVERIFY(log.at(0).jobName.isEmpty());
}

void HandOverLogTest::nothingForgesALine_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("line feed") << QStringLiteral("a\nb");
    QTest::newRow("carriage return") << QStringLiteral("a\rb");
    QTest::newRow("tab") << QStringLiteral("a\tb");
    QTest::newRow("line separator") << QStringLiteral("a") + QChar(0x2028) + QStringLiteral("b");
    QTest::newRow("next line") << QStringLiteral("a") + QChar(0x85) + QStringLiteral("b");
    QTest::newRow("right to left") << QStringLiteral("a") + QChar(0x202e) + QStringLiteral("b");
    QTest::newRow("isolate") << QStringLiteral("a") + QChar(0x2067) + QStringLiteral("b");
}

void HandOverLogTest::nothingForgesALine()
{
    QFETCH(QString, name);
    HandOverLog log;
    NoticeLog notices;
    const CamRelay relay(notices, log);
    DMS_UICommon::interface()->importNewJob(name + QStringLiteral("|") + name, name);
    QCOMPARE(cell(log, 0, HandOverLog::JobColumn), QStringLiteral("a?b"));
    QCOMPARE(cell(log, 0, HandOverLog::PathColumn), QStringLiteral("a?b"));
    QCOMPARE(cell(log, 0, HandOverLog::ParametersColumn), QStringLiteral("a?b"));
    QVERIFY(!notices.latest().text.contains(name));
    QCOMPARE(log.at(0).path, name); // the folder is found by its real name
}

void HandOverLogTest::markupStaysText()
{
    HandOverLog log;
    log.addInput(QStringLiteral("<img src=x>"), QStringLiteral("/d"));
    const QString tip = log.index(0, HandOverLog::JobColumn).data(Qt::ToolTipRole).toString();
    QVERIFY2(!tip.contains(QStringLiteral("<img")), qPrintable(tip));
}

void HandOverLogTest::theFolderOfAHandOver_data()
{
    QTest::addColumn<HandOverLog::Kind>("kind");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    using Kind = HandOverLog::Kind;
    QTest::newRow("a file to import") << Kind::Import << "/job/a.tgz"
                                      << "/job";
    QTest::newRow("a file to import that is gone") << Kind::Import << "/job/gone.tgz"
                                                   << "/job";
    QTest::newRow("a folder to import") << Kind::Import << "/job"
                                        << "/job";
    QTest::newRow("a folder to read") << Kind::Input << "/job"
                                      << "/job";
    QTest::newRow("a folder to read that is gone") << Kind::Input << "/gone"
                                                   << "/gone";
    QTest::newRow("a file to read") << Kind::Input << "/job/a.tgz"
                                    << "/job";
    QTest::newRow("with a separator at the end") << Kind::Input << "/job/"
                                                 << "/job";
}

void HandOverLogTest::theFolderOfAHandOver()
{
    QFETCH(HandOverLog::Kind, kind);
    QFETCH(QString, path);
    QFETCH(QString, folder);
    const QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("job")));
    QFile file(dir.filePath(QStringLiteral("job/a.tgz")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    HandOverLog::HandOver handOver;
    QVERIFY(HandOverFolder::of(handOver).isEmpty());
    handOver.kind = kind;
    handOver.path = dir.path() + path;
    QCOMPARE(QDir::cleanPath(HandOverFolder::of(handOver)), dir.path() + folder);
}

KODMS_TEST_MAIN(HandOverLogTest, QApplication)
#include "HandOverLogTest.moc"
