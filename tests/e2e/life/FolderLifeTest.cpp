// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/CustomerFiles.h"
#include "tests/e2e/life/LifeHouse.h"
#include "tests/e2e/life/LifeOfAJob.h"
#include "tests/e2e/life/Stations.h"
#include "tests/support/TestMain.h"

#include <QApplication>

#include <memory>

using namespace KODMS::Tests;

/// A folder of a customer's drawings, from its arrival to the finished job, and back
/// through its history: four people and the robot at the host.
class FolderLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    // The stations, in this order: each stands on the ones before.
    void theFolderIsTakenIn();
    void everybodyGetsTheirWork();
    void theExecutorDownloadsIt();
    void thePreparedJobIsImported();
    void theReviewerAsks();
    void theExecutorAnswers();
    void theReviewerFailsIt();
    void theJobIsImportedOnceMore();
    void theReviewerIsContent();
    void theRobotWorksOnIt();
    void theResultIsReviewed();
    void theJobIsExported();
    void theExecutorFinishesIt();
    void theHistoryTellsItAll();
    void recordsAndStoreAgree();

private:
    std::unique_ptr<LifeHouse> m_house;
    std::unique_ptr<LifeOfAJob> m_job;
    CustomerFiles m_files;
};

namespace {

const QString Folder = QStringLiteral("控制板 V3");

} // namespace

void FolderLifeTest::initTestCase()
{
    m_house = std::make_unique<LifeHouse>();
    m_job = std::make_unique<LifeOfAJob>(*m_house);
}

void FolderLifeTest::cleanupTestCase()
{
    m_job.reset();
    m_house.reset();
}

void FolderLifeTest::theFolderIsTakenIn()
{
    Stations::takeIn(*m_job, {m_files.folder(Folder, CustomerFiles::drawings()),
                              QStringLiteral("K7Q"), QStringLiteral("启明电子"), Folder, false});
}

void FolderLifeTest::everybodyGetsTheirWork()
{
    Stations::assign(*m_job);
}

void FolderLifeTest::theExecutorDownloadsIt()
{
    CustomerFiles::Files packed; // under the name of the folder
    const CustomerFiles::Files sent = CustomerFiles::drawings();
    for (auto file = sent.cbegin(); file != sent.cend(); ++file)
        packed.insert(Folder + QLatin1Char('/') + file.key(), file.value());
    Stations::download(*m_job, packed);
}

void FolderLifeTest::thePreparedJobIsImported()
{
    Stations::import(*m_job, m_files.preparedJob(QStringLiteral("ctrl-v3"), 4),
                     QStringLiteral("ctrl-v3"));
}

void FolderLifeTest::theReviewerAsks()
{
    Stations::raiseQuestion(*m_job);
}

void FolderLifeTest::theExecutorAnswers()
{
    Stations::answerQuestion(*m_job);
}

void FolderLifeTest::theReviewerFailsIt()
{
    Stations::fail(*m_job);
}

void FolderLifeTest::theJobIsImportedOnceMore()
{
    Stations::import(*m_job, m_files.preparedJob(QStringLiteral("ctrl-v3-b"), 6),
                     QStringLiteral("ctrl-v3-b"));
}

void FolderLifeTest::theReviewerIsContent()
{
    Stations::resolveQuestion(*m_job);
    Stations::pass(*m_job);
}

void FolderLifeTest::theRobotWorksOnIt()
{
    Stations::sendToRobot(*m_job);
}

void FolderLifeTest::theResultIsReviewed()
{
    Stations::pass(*m_job);
}

void FolderLifeTest::theJobIsExported()
{
    Stations::exportJob(*m_job);
}

void FolderLifeTest::theExecutorFinishesIt()
{
    Stations::finish(*m_job);
}

void FolderLifeTest::theHistoryTellsItAll()
{
    Stations::readHistory(*m_job);
}

void FolderLifeTest::recordsAndStoreAgree()
{
    Stations::checkStore(*m_job);
}

KODMS_TEST_MAIN(FolderLifeTest, QApplication)
#include "FolderLifeTest.moc"
