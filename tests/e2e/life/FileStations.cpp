// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/SampleArchives.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/Drop.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/ImportUser.h"
#include "tests/e2e/life/CustomerFiles.h"
#include "tests/e2e/life/HostUser.h"
#include "tests/e2e/life/LifeHouse.h"
#include "tests/e2e/life/LifeOfAJob.h"
#include "tests/e2e/life/People.h"
#include "tests/e2e/life/StationPictures.h"
#include "tests/e2e/life/Stations.h"
#include "tests/fakes/MessageBoxProbe.h"

#include "apps/desk/MainWindow.h"

#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace KODMS::Tests {

using Fakes::MessageBoxProbe;
using File = LifeOfAJob::File;

namespace {

void fillIn(QDialog &dialog, const Stations::Parcel &parcel)
{
    const auto field = [&dialog](const char *name) {
        return dialog.findChild<QLineEdit *>(QLatin1String(name));
    };
    dropPath(*dialog.findChild<QWidget *>(QStringLiteral("dropZone")), parcel.path);
    QTest::keyClicks(field("customerCode"), parcel.customerCode);
    if (field("customerName")->isEnabled())
        commitText(*field("customerName"), parcel.customerName);
    QCOMPARE(field("origName")->text(), parcel.origName);
    if (parcel.isPaid) {
        auto *paid = dialog.findChild<QCheckBox *>(QStringLiteral("paid"));
        paid->setFocus();
        QTest::keyClick(paid, Qt::Key_Space);
    }
    StationPictures::take(dialog, "station-intake");
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("primary")), Qt::LeftButton);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Gives the row to the person whom the list beside the button names.
void assignRow(const DeskUser &desk, int row, const Services::NewUser &person)
{
    QVERIFY(row >= 0);
    desk.pick("m_pAssignerCMB", person.realName);
    desk.selectRows({row});
    const MessageBoxProbe boxes;
    desk.click("m_pAssignPB");
    QCOMPARE(boxes.texts(), QStringList());
}

} // namespace

void Stations::takeIn(LifeOfAJob &job, const Parcel &parcel)
{
    const HostUser keeper(job.house(), People::keeper());
    QString name;
    keeper.pressAndAnswer(Qt::Key_N, Qt::ControlModifier, [&](QDialog &dialog) {
        fillIn(dialog, parcel);
        name = dialog.findChild<QLabel *>(QStringLiteral("receiptJobName"))->text();
        StationPictures::take(dialog, "station-receipt");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QVERIFY(!name.isEmpty());
    job.begin(name);
    const bool isKos = QFileInfo(parcel.path).suffix() == QLatin1String("kos");
    QCOMPARE(job.state(), isKos ? QStringLiteral("1,2") : QStringLiteral("0,0"));
    QCOMPARE(job.record(QStringLiteral("c.orig_name")), parcel.origName);
    QCOMPARE(job.record(QStringLiteral("(SELECT o.payment FROM orders o WHERE o.flow_id = f.id)")),
             QString::number(parcel.isPaid ? 1 : 0));
    QVERIFY(!job.storedBytes(File::Original).isEmpty());
    if (!QFileInfo(parcel.path).isDir())
        QCOMPARE(job.storedBytes(File::Original), bytesOf(parcel.path));
    const DeskUser flows = keeper.jobFlows();
    QCOMPARE(job.rowAt(flows, ExportUser::JobName), 0);
    QCOMPARE(flows.column(ExportUser::Status).first(),
             isKos ? QStringLiteral("前处理通过") : QStringLiteral("待前处理"));
    const DeskUser files = keeper.origFiles();
    QCOMPARE(files.column(DownloadUser::FlowGuid).first(), job.flowGuid());
    QCOMPARE(job.house().takeNotices(), QStringList());
    job.did(People::keeper().realName, QStringLiteral("接收客户文件"),
            QFileInfo(parcel.path).fileName());
}

void Stations::assign(LifeOfAJob &job)
{
    const HostUser planner(job.house(), People::planner());
    const DeskUser files = planner.origFiles();
    const int file = files.rowOf(DownloadUser::FlowGuid, job.flowGuid());
    assignRow(files, file, People::executor());
    QCOMPARE(files.column(DownloadUser::Executor).at(file), People::executor().realName);
    StationPictures::take(planner.window(), "station-executor");
    job.did(People::planner().realName, QStringLiteral("指派前处理人"),
            People::executor().realName);

    const DeskUser flows = planner.jobFlows();
    const int flow = job.rowAt(flows, ExportUser::JobName);
    assignRow(flows, flow, People::reviewer());
    QCOMPARE(flows.column(ExportUser::PreProcessor).at(flow), People::executor().realName);
    QCOMPARE(flows.column(ExportUser::PreChecker).at(flow), People::reviewer().realName);
    StationPictures::take(planner.window(), "station-reviewer");
    job.did(People::planner().realName, QStringLiteral("指派审核人"), People::reviewer().realName);
    const QString assigned =
        QStringLiteral("(SELECT u.real_name FROM %1 a JOIN users u ON u.id = a.executor_id "
                       "WHERE a.flow_id = f.id)");
    QCOMPARE(job.record(assigned.arg(QStringLiteral("orig_file_assign"))),
             People::executor().realName);
    QCOMPARE(job.record(assigned.arg(QStringLiteral("pre_check_assign"))),
             People::reviewer().realName);
    QCOMPARE(job.house().takeNotices(), QStringList());
}

void Stations::download(LifeOfAJob &job, const QMap<QString, QByteArray> &files)
{
    const HostUser executor(job.house(), People::executor());
    const DeskUser flows = executor.jobFlows();
    const int row = job.rowAt(flows, ExportUser::JobName);
    QVERIFY(row >= 0);
    flows.clickCell(row, ExportUser::JobName);
    StationPictures::take(executor.window(), "station-download");
    MessageBoxProbe boxes;
    boxes.answer(QMessageBox::Yes);
    flows.click("m_pDownloadPB");
    QCOMPARE(boxes.texts(), QStringList({QStringLiteral("确认下载这些job?"),
                                         QStringLiteral("Download complete!")}));
    const QString folder = job.house().sample().downloadFolder() + job.name();
    QCOMPARE(CustomerFiles::filesIn(folder).keys(), files.keys());
    QCOMPARE(CustomerFiles::filesIn(folder), files);
#if !defined(Q_OS_WIN) // where the Explorer is started, which no test waits for
    QCOMPARE(job.house().openedFolder(), QUrl::fromLocalFile(folder));
#endif
    QCOMPARE(job.house().takeNotices(), QStringList());
}

void Stations::import(LifeOfAJob &job, const QString &archive, const QString &jobName)
{
    const QString before = job.state();
    const QString fileBefore = job.record(QStringLiteral(
        "(SELECT o.base_name || '.tgz' FROM orig_files o WHERE o.id = f.last_import_file_id)"));
    const HostUser executor(job.house(), People::executor());
    const DeskUser flows = executor.jobFlows();
    const int row = job.rowAt(flows, ExportUser::JobName);
    QVERIFY(row >= 0);
    const QString statusBefore = flows.column(ExportUser::Status).at(row);
    flows.clickCell(row, ExportUser::JobName);
    const MessageBoxProbe boxes;
    flows.click("m_pImputPB");
    const ImportUser window;
    QVERIFY(window.isThere());
    QVERIFY(window.text("importTarget").contains(job.name()));
    window.drop(archive);
    QCOMPARE(window.text("importMessage"), QString());
    QCOMPARE(window.text("importJobName"), jobName);
    QCOMPARE(job.state(), before);
    StationPictures::take(*window.window(), "station-import");
    window.import();
    QCOMPARE(job.state(), QStringLiteral("1,0"));
    QCOMPARE(job.record(QStringLiteral("f.orig_job_name")), jobName);
    QCOMPARE(job.storedBytes(File::Import), bytesOf(archive));
    QTRY_COMPARE(flows.column(ExportUser::Status).at(job.rowAt(flows, ExportUser::JobName)),
                 QStringLiteral("前处理待审核"));
    StationPictures::take(*window.window(), "station-imported");
    QTest::keyClick(window.window(), Qt::Key_Escape);
    QVERIFY(!window.isThere());
    QCOMPARE(boxes.texts(), QStringList());
    QCOMPARE(job.house().takeNotices(), QStringList());
    const QString who = People::executor().realName;
    job.did(who, QStringLiteral("保存导入的料号"),
            LifeOfAJob::change(fileBefore, jobName + QStringLiteral(".tgz")));
    job.did(who, QStringLiteral("导入料号"),
            LifeOfAJob::change(statusBefore, QStringLiteral("前处理待审核")));
}

} // namespace KODMS::Tests
