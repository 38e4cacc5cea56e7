// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/StoreCheck.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/life/HostUser.h"
#include "tests/e2e/life/LifeHouse.h"
#include "tests/e2e/life/LifeOfAJob.h"
#include "tests/e2e/life/People.h"
#include "tests/e2e/life/StationPictures.h"
#include "tests/e2e/life/Stations.h"
#include "tests/fakes/MessageBoxProbe.h"

#include "apps/desk/MainWindow.h"

#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace KODMS::Tests {

using Fakes::MessageBoxProbe;

namespace {

QStringList linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))
               : QStringList();
}

/// Each person's deeds keep their order.
void sortByPerson(QStringList *deeds)
{
    std::stable_sort(deeds->begin(), deeds->end(), [](const QString &a, const QString &b) {
        return a.section(QLatin1Char(':'), 0, 0) < b.section(QLatin1Char(':'), 0, 0);
    });
}

} // namespace

void Stations::exportJob(LifeOfAJob &job)
{
    const HostUser keeper(job.house(), People::keeper());
    const DeskUser flows = keeper.jobFlows();
    flows.clickCell(job.rowAt(flows, ExportUser::JobName), ExportUser::JobName);
    MessageBoxProbe boxes;
    boxes.answer(QMessageBox::Yes);
    // The desk does not show this button; the host that owns the CAM side presses it.
    flows.control<QPushButton>("m_pExportPB")->click();
    QCOMPARE(boxes.texts(),
             QStringList({QStringLiteral("确认导出选择的job？"), QStringLiteral("导出  成功")}));
    QVERIFY(job.house().handOvers().value(0).contains(job.name()));
    keeper.press(Qt::Key_F9);
    StationPictures::take(keeper.window(), "station-export");
    keeper.press(Qt::Key_F9);

    const QTemporaryDir folder;
    const QString list = folder.filePath(QStringLiteral("list.csv"));
    keeper.pressAndAnswer(Qt::Key_E, Qt::ControlModifier,
                          [&list](QDialog &dialog) { chooseFile(dialog, list); });
    QTRY_VERIFY(QFile::exists(list));
    const QStringList line = linesOf(list).filter(job.name());
    QCOMPARE(line.size(), 1);
    QVERIFY2(line.first().contains(QStringLiteral("机器人通过")), qPrintable(line.first()));
    QCOMPARE(job.state(), QStringLiteral("2,2"));
}

void Stations::finish(LifeOfAJob &job)
{
    const HostUser executor(job.house(), People::executor());
    const DeskUser history = executor.origFiles();
    const int row = job.rowAt(history, DownloadUser::HistoryJobName);
    QVERIFY(row >= 0);
    history.clickCell(row, DownloadUser::HistoryJobName);
    StationPictures::take(executor.window(), "station-finish");
    const MessageBoxProbe boxes;
    history.click("m_pDownloadPB");
    QCOMPARE(boxes.texts(), QStringList());
    QCOMPARE(job.state(), QStringLiteral("3,2"));
    QCOMPARE(
        history.column(ExportUser::Status).at(job.rowAt(history, DownloadUser::HistoryJobName)),
        QStringLiteral("流程完成"));
    QCOMPARE(job.statusFor(People::keeper()), QStringLiteral("流程完成"));
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(People::executor().realName, QStringLiteral("完成流程"),
            QStringLiteral("机器人通过 → 流程完成"));
}

void Stations::readHistory(LifeOfAJob &job, Order order)
{
    const HostUser keeper(job.house(), People::keeper());
    const DeskUser flows = keeper.jobFlows();
    const int row = job.rowAt(flows, ExportUser::JobName);
    QVERIFY(row >= 0);
    const QVector<ToldDeed> told = keeper.history(flows, row);
    auto *panel = keeper.window().findChild<QDockWidget *>(QStringLiteral("historyPanel"));
    keeper.window().resizeDocks({panel}, {480}, Qt::Vertical); // as somebody who wants to read it
    StationPictures::take(keeper.window(), "station-history");
    QStringList deeds;
    QString last;
    for (const ToldDeed &deed : told) {
        deeds << deed.who + QStringLiteral(": ") + deed.action + QStringLiteral(": ") +
                     deed.content;
        QVERIFY2(QDateTime::fromString(deed.time, QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid(),
                 qPrintable(deed.time));
        QVERIFY2(deed.time >= last, qPrintable(deed.time));
        last = deed.time;
    }
    QStringList done = job.deeds();
    if (order == Order::OfEachPerson) {
        sortByPerson(&deeds);
        sortByPerson(&done);
    }
    QCOMPARE(deeds, done);
}

void Stations::checkStore(LifeOfAJob &job)
{
    job.house().enter(People::keeper());
    const auto report = Services::StoreCheck::check({});
    QVERIFY2(report.outcome.ok, qPrintable(report.outcome.text));
    QStringList findings;
    for (const Services::CheckFinding &finding : report.value.findings)
        findings << finding.kind + QLatin1Char(' ') + finding.text;
    QCOMPARE(findings, QStringList());
    QVERIFY(report.value.filesRead > 0);
    QCOMPARE(report.value.filesRead, report.value.files);
}

} // namespace KODMS::Tests
