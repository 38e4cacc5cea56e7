// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/MainWindow.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
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
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <memory>

using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_ModifyFile_Widget;

/// A kos archive, which needs no pre-processing: from its arrival over a newer one to the
/// finished job.
class KosLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    // The stations, in this order: each stands on the ones before.
    void theArchiveIsTakenIn();
    void everybodyGetsTheirWork();
    void theExecutorDownloadsIt();
    void thereIsNothingToImport();
    void aQuestionIsAskedAndAnswered();
    void whatWasNeverImportedIsNotJudged();
    void aNewerArchiveGoesToTheRobot();
    void theFirstResultFails();
    void theSecondResultPasses();
    void theJobIsExportedAndFinished();
    void theHistoryTellsItAll();
    void recordsAndStoreAgree();

private:
    std::unique_ptr<LifeHouse> m_house;
    std::unique_ptr<LifeOfAJob> m_job;
    CustomerFiles m_files;
};

namespace {

CustomerFiles::Files product(const QByteArray &revision)
{
    return {{QStringLiteral("amp/layer/amp.tgz"), "the layers of " + revision},
            {QStringLiteral("amp/job.xml"), "<job revision='" + revision + "'/>"}};
}

/// The window in which the file of a job is replaced.
DMS_ModifyFile_Widget *openReplacement(const DeskUser &files, int row)
{
    files.clickCell(row, DownloadUser::OrigName);
    MessageBoxProbe boxes;
    boxes.answer(QMessageBox::Yes);
    files.click("m_pUpdateFilePB");
    return files.desk<DMS_Download_Widget>()->findChild<DMS_ModifyFile_Widget *>();
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void KosLifeTest::initTestCase()
{
    m_house = std::make_unique<LifeHouse>();
    m_job = std::make_unique<LifeOfAJob>(*m_house);
}

void KosLifeTest::cleanupTestCase()
{
    m_job.reset();
    m_house.reset();
}

void KosLifeTest::theArchiveIsTakenIn()
{
    Stations::takeIn(*m_job, {m_files.archive(QStringLiteral("amp.kos"), product("A")),
                              QStringLiteral("K7Q"), QStringLiteral("启明电子"),
                              QStringLiteral("amp"), false});
}

void KosLifeTest::everybodyGetsTheirWork()
{
    Stations::assign(*m_job);
}

void KosLifeTest::theExecutorDownloadsIt()
{
    Stations::download(*m_job, product("A"));
}

void KosLifeTest::thereIsNothingToImport()
{
    const HostUser executor(*m_house, People::executor());
    const DeskUser flows = executor.jobFlows();
    flows.clickCell(m_job->rowAt(flows, ExportUser::JobName), ExportUser::JobName);
    const MessageBoxProbe boxes;
    flows.click("m_pImputPB");
    QCOMPARE(boxes.texts(), QStringList(QStringLiteral("kos格式无需导入")));
    QVERIFY(!ImportUser().isThere());
}

void KosLifeTest::aQuestionIsAskedAndAnswered()
{
    Stations::raiseQuestion(*m_job);
    Stations::answerQuestion(*m_job);
    Stations::resolveQuestion(*m_job);
}

void KosLifeTest::whatWasNeverImportedIsNotJudged()
{
    const HostUser reviewer(*m_house, People::reviewer());
    const DeskUser flows = reviewer.jobFlows();
    flows.clickCell(m_job->rowAt(flows, ExportUser::JobName), ExportUser::JobName);
    const MessageBoxProbe boxes;
    flows.click("m_pJobUnpassPB");
    QCOMPARE(boxes.texts(), QStringList(QStringLiteral("请先导入odbpp!")));
    QCOMPARE(m_job->state(), QStringLiteral("1,2"));
}

void KosLifeTest::aNewerArchiveGoesToTheRobot()
{
    const QString newer = m_files.archive(QStringLiteral("amp-b.kos"), product("B"));
    const QString before = m_job->storedName(LifeOfAJob::File::Original);
    const HostUser keeper(*m_house, People::keeper());
    const DeskUser desk = keeper.origFiles();
    auto *window = openReplacement(desk, desk.rowOf(DownloadUser::FlowGuid, m_job->flowGuid()));
    QVERIFY(window && window->isVisible());
    actAndAnswer(
        [window] {
            QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("m_pOpenFilePB")),
                              Qt::LeftButton);
        },
        [&newer](QDialog &dialog) { chooseFile(dialog, newer); });
    QCOMPARE(window->findChild<QLineEdit *>(QStringLiteral("m_pNameLE"))->text(),
             QStringLiteral("amp-b"));
    StationPictures::take(*window, "station-replace");
    const MessageBoxProbe boxes;
    QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("m_pSingleImportPB")),
                      Qt::LeftButton);
    QCOMPARE(boxes.texts(), QStringList(QStringLiteral("修改文件成功!")));
    window->close();
    QVERIFY(m_job->storedName(LifeOfAJob::File::Original) != before);
    QCOMPARE(m_job->storedBytes(LifeOfAJob::File::Original), bytesOf(newer));
    QCOMPARE(m_job->storedName(LifeOfAJob::File::Import),
             m_job->storedName(LifeOfAJob::File::Original));
    QCOMPARE(m_job->record(QStringLiteral("c.orig_name")), QStringLiteral("amp-b"));
    const QString who = People::keeper().realName;
    const QString files = QStringLiteral("amp.kos → amp-b.kos");
    m_job->did(who, QStringLiteral("更换原始文件"), files);
    m_job->did(who, QStringLiteral("更换导入文件"), files);
    m_job->did(who, QStringLiteral("更改状态"), QStringLiteral("前处理通过 → 前处理通过"));
    m_job->did(who, QStringLiteral("更改原始料名"), QStringLiteral("amp → amp-b"));
    Stations::awaitRobot(*m_job, QStringLiteral("前处理通过"));
}

void KosLifeTest::theFirstResultFails()
{
    Stations::fail(*m_job);
}

void KosLifeTest::theSecondResultPasses()
{
    Stations::sendToRobot(*m_job);
    Stations::pass(*m_job);
}

void KosLifeTest::theJobIsExportedAndFinished()
{
    Stations::exportJob(*m_job);
    Stations::finish(*m_job);
}

void KosLifeTest::theHistoryTellsItAll()
{
    // The robot begins while the desk that asked it goes on.
    Stations::readHistory(*m_job, Stations::Order::OfEachPerson);
}

void KosLifeTest::recordsAndStoreAgree()
{
    Stations::checkStore(*m_job);
}

KODMS_TEST_MAIN(KosLifeTest, QApplication)
#include "KosLifeTest.moc"
