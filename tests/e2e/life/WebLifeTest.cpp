// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/MainWindow.h"
#include "tests/e2e/DownloadUser.h"
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
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTableWidget>

#include <memory>

using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;

/// Two orders from the web: one is paid for only when its job is stopped, the other from
/// the beginning.
class WebLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    // The stations of the unpaid order, in this order: each stands on the ones before.
    void theUnpaidOrderIsTakenIn();
    void itsFilesAreNotHandedOut();
    void itIsPreparedAllTheSame();
    void itIsNotSentToTheRobot();
    void itIsPaid();
    void itsFilesAreHandedOutNow();
    void theRobotWorksOnIt();
    void theResultIsImportedAgainWhichFinishesIt();
    void theHistoryTellsItAll();

    void aPaidOrderIsNeverStopped();
    void recordsAndStoreAgree();

private:
    Stations::Parcel parcel(const QString &name, bool isPaid) const;
    void downloadByKeeper(const LifeOfAJob &job) const;

    std::unique_ptr<LifeHouse> m_house;
    std::unique_ptr<LifeOfAJob> m_job;
    CustomerFiles m_files;
};

namespace {

const QString Unpaid = QStringLiteral("此流程状态未付款");
constexpr int PatienceMs = 60000;

CustomerFiles::Files order()
{
    return {{QStringLiteral("board.tgz"), "a job"}, {QStringLiteral("readme.txt"), "urgent"}};
}

/// What is on the disk for the job of the download folder.
QString folderOf(const LifeOfAJob &job)
{
    return job.house().sample().downloadFolder() + job.name();
}

/// By the program of those who keep the accounts.
void pay(const LifeOfAJob &job)
{
    QProcess admin;
    admin.start(QStringLiteral(KODMS_ADMIN_PROGRAM),
                {QStringLiteral("--config"), job.house().sample().configPath(),
                 QStringLiteral("order"), QStringLiteral("pay"), job.name()});
    QVERIFY(admin.waitForFinished(PatienceMs));
    QVERIFY2(admin.exitStatus() == QProcess::NormalExit && admin.exitCode() == 0,
             admin.readAllStandardError().constData());
}

} // namespace

void WebLifeTest::initTestCase()
{
    m_house = std::make_unique<LifeHouse>();
    m_job = std::make_unique<LifeOfAJob>(*m_house);
}

void WebLifeTest::cleanupTestCase()
{
    m_job.reset();
    m_house.reset();
}

Stations::Parcel WebLifeTest::parcel(const QString &name, bool isPaid) const
{
    return {m_files.archive(name + QStringLiteral(".tgz"), order()), QStringLiteral("web"),
            QStringLiteral("网站"), name, isPaid};
}

/// What comes from the web is handed to the CAM side as one file.
void WebLifeTest::downloadByKeeper(const LifeOfAJob &job) const
{
    const HostUser keeper(*m_house, People::keeper());
    const DeskUser files = keeper.origFiles();
    files.clickCell(files.rowOf(DownloadUser::FlowGuid, job.flowGuid()), DownloadUser::OrigName);
    MessageBoxProbe boxes;
    boxes.answer(QMessageBox::Yes);
    files.click("m_pDownloadPB");
    QCOMPARE(boxes.texts(), QStringList({QStringLiteral("确认下载这些job?"),
                                         QStringLiteral("Download complete!")}));
    QCOMPARE(CustomerFiles::filesIn(folderOf(job)), order());
    QVERIFY(m_house->handOvers().value(0).endsWith(job.name() + QLatin1Char(' ') + folderOf(job) +
                                                   QStringLiteral("/board.tgz")));
    QCOMPARE(m_house->takeNotices(), QStringList());
}

void WebLifeTest::theUnpaidOrderIsTakenIn()
{
    Stations::takeIn(*m_job, parcel(QStringLiteral("shop-11"), false));
    QVERIFY(m_job->name().startsWith(QStringLiteral("web"), Qt::CaseInsensitive));
}

void WebLifeTest::itsFilesAreNotHandedOut()
{
    const HostUser keeper(*m_house, People::keeper());
    const DeskUser files = keeper.origFiles();
    files.clickCell(files.rowOf(DownloadUser::FlowGuid, m_job->flowGuid()), DownloadUser::OrigName);
    const MessageBoxProbe boxes;
    files.click("m_pDownloadPB");
    QCOMPARE(boxes.texts(), QStringList(Unpaid));
    QVERIFY(!QFileInfo::exists(folderOf(*m_job)));
    QCOMPARE(m_house->handOvers(), QStringList());
}

void WebLifeTest::itIsPreparedAllTheSame()
{
    Stations::assign(*m_job);
    Stations::import(*m_job, m_files.preparedJob(QStringLiteral("shop-11-odb"), 2),
                     QStringLiteral("shop-11-odb"));
    Stations::pass(*m_job);
}

void WebLifeTest::itIsNotSentToTheRobot()
{
    const HostUser reviewer(*m_house, People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    flows.clickCell(m_job->rowAt(flows, ExportUser::JobName), ExportUser::JobName);
    const MessageBoxProbe boxes;
    flows.click("m_pSendRobotPB");
    QCOMPARE(boxes.texts(), QStringList(Unpaid));
    QCOMPARE(m_job->state(), QStringLiteral("1,2"));
    QCOMPARE(m_job->storedName(LifeOfAJob::File::Result), QString());
}

void WebLifeTest::itIsPaid()
{
    pay(*m_job);
    m_job->did(QStringLiteral("系统管理"), QStringLiteral("订单付款"),
               QStringLiteral("未付款 → 已付款"));
}

void WebLifeTest::itsFilesAreHandedOutNow()
{
    downloadByKeeper(*m_job);
}

void WebLifeTest::theRobotWorksOnIt()
{
    Stations::sendToRobot(*m_job);
    Stations::pass(*m_job);
}

void WebLifeTest::theResultIsImportedAgainWhichFinishesIt()
{
    const QString archive = m_files.preparedJob(QStringLiteral("shop-11-final"), 2);
    const HostUser executor(*m_house, People::executor());
    const DeskUser history = executor.origFiles();
    history.clickCell(m_job->rowAt(history, DownloadUser::HistoryJobName),
                      DownloadUser::HistoryJobName);
    const MessageBoxProbe boxes;
    history.click("m_pRobotImport");
    const ImportUser window;
    QVERIFY(window.isThere());
    window.drop(archive);
    StationPictures::take(*window.window(), "station-result-import");
    window.import();
    QCOMPARE(boxes.texts(), QStringList());
    QCOMPARE(m_job->state(), QStringLiteral("3,2"));
    QCOMPARE(m_job->record(QStringLiteral("f.orig_job_name")), QStringLiteral("shop-11-final"));
    QVERIFY(!m_job->storedBytes(LifeOfAJob::File::Import).isEmpty());
    QCOMPARE(m_house->takeNotices(), QStringList());
    const QString who = People::executor().realName;
    m_job->did(who, QStringLiteral("导入机器人结果"),
               QStringLiteral("shop-11-odb.tgz → shop-11-final.tgz"));
    m_job->did(who, QStringLiteral("完成流程"), QStringLiteral("机器人通过 → 流程完成"));
}

void WebLifeTest::theHistoryTellsItAll()
{
    Stations::readHistory(*m_job);
}

void WebLifeTest::aPaidOrderIsNeverStopped()
{
    LifeOfAJob job(*m_house);
    Stations::takeIn(job, parcel(QStringLiteral("shop-12"), true));
    downloadByKeeper(job);
    Stations::assign(job);
    Stations::import(job, m_files.preparedJob(QStringLiteral("shop-12-odb"), 2),
                     QStringLiteral("shop-12-odb"));
    Stations::pass(job);
    Stations::sendToRobot(job);
    Stations::pass(job);
    Stations::exportJob(job);
    Stations::finish(job);
    Stations::readHistory(job);
}

void WebLifeTest::recordsAndStoreAgree()
{
    Stations::checkStore(*m_job);
}

KODMS_TEST_MAIN(WebLifeTest, QApplication)
#include "WebLifeTest.moc"
