// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/ForeignChanges.h"

#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "services/records/TimeText.h"
#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"
#include "services/session/Authenticator.h"
#include "services/session/PasswordHash.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS;
using namespace KODMS::Services;
using DataLib::BLL::Odbpp_JobFlowBll;
using Tests::TestJob;
using Tests::TestSession;

/// Two desks on the same records: what the one does, the other counts.
class ForeignChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void nothingIsCountedBeforeTheBeginning();
    void eachRecordCountsOnce();
    void ownChangesAreNotCounted();
    void theSamePersonAtAnotherDeskCounts();
    void whatChangesNothingIsNotCounted();
    void somethingWrittenWithoutAWordIsOneChange_data();
    void somethingWrittenWithoutAWordIsOneChange();
    void itIsNoticedBesideOwnWrites();
    void theBeginningIsZero();
    void theEndIsZeroAndSilent();
    void anOwnWriteThatIsUndoneHidesNothing();
    void thousandsAreReadInSteps();
    void aWriteReadsAllOfOthersBeforeItself();
    void aFailureKeepsTheCount();
    void whatALookCosts();

private:
    void remark(TestSession &desk, const TestJob &job, const char *text);
    void insertEvents(int count);

    std::unique_ptr<Tests::RecordsHome> m_home;
    int m_user = 0;
    TestSession *m_here = nullptr;
    TestSession *m_there = nullptr;
    std::unique_ptr<ForeignChanges> m_changes;
};

void ForeignChangesTest::initTestCase()
{
    m_home = std::make_unique<Tests::RecordsHome>();
    m_user = m_home->addUser(QStringLiteral("here"), {Role::Admin});
    m_here = &m_home->signIn(m_user);
    m_there = &m_home->signIn(m_home->addUser(QStringLiteral("there"), {Role::Admin}));
}

void ForeignChangesTest::init()
{
    m_changes = std::make_unique<ForeignChanges>(m_here->context->database());
}

void ForeignChangesTest::cleanup()
{
    m_changes.reset();
}

void ForeignChangesTest::cleanupTestCase()
{
    m_home.reset();
}

void ForeignChangesTest::remark(TestSession &desk, const TestJob &job, const char *text)
{
    m_home->makeCurrent(desk);
    m_home->show(desk, job);
    QVERIFY(Odbpp_JobFlowBll().UpdateTips(desk.context->actor().userId, text, job.flowGuid));
}

/// By another connection, in one transaction, each about a record of its own.
void ForeignChangesTest::insertEvents(int count)
{
    Database &database = m_there->context->database();
    Transaction transaction(database);
    for (int i = 1; i <= count; ++i)
        writeAudit(database, {0, QStringLiteral("remark.UpdateTips"), QStringLiteral("flow"), i,
                              QString(), QString(), QString(), false});
    transaction.commit();
}

void ForeignChangesTest::nothingIsCountedBeforeTheBeginning()
{
    const TestJob job = m_home->addJob();
    remark(*m_there, job, "early");
    m_changes->look();
    QVERIFY(!m_changes->isCounting());
    QCOMPARE(m_changes->count(), 0);
    m_changes->begin();
    QVERIFY(m_changes->isCounting());
    m_changes->look();
    QCOMPARE(m_changes->count(), 0);
}

void ForeignChangesTest::eachRecordCountsOnce()
{
    const TestJob first = m_home->addJob();
    const TestJob second = m_home->addJob();
    m_changes->begin();
    remark(*m_there, first, "one");
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
    remark(*m_there, first, "two");
    remark(*m_there, second, "three");
    m_changes->look();
    QCOMPARE(m_changes->count(), 2);
    m_changes->look();
    QCOMPARE(m_changes->count(), 2);
}

void ForeignChangesTest::ownChangesAreNotCounted()
{
    const TestJob first = m_home->addJob();
    const TestJob second = m_home->addJob();
    m_changes->begin();
    remark(*m_here, first, "mine");
    m_changes->look();
    QCOMPARE(m_changes->count(), 0);
    remark(*m_there, second, "theirs");
    remark(*m_here, first, "mine again");
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
    remark(*m_there, first, "theirs");
    m_changes->look();
    QCOMPARE(m_changes->count(), 2);
}

void ForeignChangesTest::theSamePersonAtAnotherDeskCounts()
{
    const TestJob job = m_home->addJob();
    TestSession &elsewhere = m_home->signIn(m_user);
    m_changes->begin();
    remark(elsewhere, job, "from the other desk");
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
}

/// Refused, signed in, tried with a wrong password: no desk shows any of it.
void ForeignChangesTest::whatChangesNothingIsNotCounted()
{
    const TestJob job = m_home->addJob();
    const int stranger = m_home->addUser(QStringLiteral("stranger"));
    UserRecords(m_home->database())
        .setPasswordHash(stranger, PasswordHash::make(QStringLiteral("right-one")));
    TestSession &desk = m_home->signIn(stranger);
    m_changes->begin();
    QVERIFY(!Odbpp_JobFlowBll().UpdateTips(stranger, "not mine to write", job.flowGuid));
    Authenticator authenticator(desk.context->database());
    QVERIFY(!authenticator.check(QStringLiteral("stranger"), QStringLiteral("wrong-one")));
    QVERIFY(authenticator.check(QStringLiteral("stranger"), QStringLiteral("right-one")));
    m_changes->look();
    QCOMPARE(m_changes->count(), 0);
}

void ForeignChangesTest::somethingWrittenWithoutAWordIsOneChange_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("a flow") << "UPDATE job_flows SET tips = 'raw'";
    QTest::newRow("a customer's name") << "UPDATE customers SET short_name = 'raw'";
    QTest::newRow("a row that is gone") << "DELETE FROM job_compress";
}

void ForeignChangesTest::somethingWrittenWithoutAWordIsOneChange()
{
    QFETCH(QString, statement);
    const TestJob first = m_home->addJob();
    m_home->addJob();
    m_changes->begin();
    m_there->context->database().run(statement);
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
    m_there->context->database().run(statement);
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
    remark(*m_there, first, "said");
    m_changes->look();
    QCOMPARE(m_changes->count(), 2);
}

void ForeignChangesTest::itIsNoticedBesideOwnWrites()
{
    const TestJob job = m_home->addJob();
    m_changes->begin();
    remark(*m_here, job, "before");
    m_there->context->database().run(QStringLiteral("UPDATE job_flows SET batch_number = 7"));
    remark(*m_here, job, "after");
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
}

void ForeignChangesTest::theBeginningIsZero()
{
    const TestJob job = m_home->addJob();
    m_changes->begin();
    remark(*m_there, job, "one");
    m_there->context->database().run(QStringLiteral("UPDATE job_flows SET batch_number = 7"));
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
    remark(*m_there, job, "not looked at yet");
    m_changes->begin();
    QCOMPARE(m_changes->count(), 0);
    m_changes->look();
    QCOMPARE(m_changes->count(), 0);
}

void ForeignChangesTest::theEndIsZeroAndSilent()
{
    const TestJob job = m_home->addJob();
    m_changes->begin();
    remark(*m_there, job, "one");
    m_changes->look();
    m_changes->end();
    QCOMPARE(m_changes->count(), 0);
    remark(*m_there, job, "two");
    remark(*m_here, job, "three");
    m_changes->look();
    QCOMPARE(m_changes->count(), 0);
}

void ForeignChangesTest::anOwnWriteThatIsUndoneHidesNothing()
{
    const TestJob job = m_home->addJob();
    Database &database = m_here->context->database();
    m_changes->begin();
    {
        const Transaction undone(database);
        writeAudit(database, {m_user, QStringLiteral("remark.UpdateTips"), QStringLiteral("flow"),
                              job.flowId, QString(), QString(), QString(), false});
    }
    // The number of the event that was undone may be given out again.
    remark(*m_there, job, "theirs");
    m_changes->look();
    QCOMPARE(m_changes->count(), 1);
}

void ForeignChangesTest::thousandsAreReadInSteps()
{
    m_changes->begin();
    insertEvents(2500);
    m_changes->look();
    QCOMPARE(m_changes->count(), 1000);
    m_changes->look();
    QCOMPARE(m_changes->count(), 2000);
    m_changes->look();
    QCOMPARE(m_changes->count(), 2500);
    m_changes->look();
    QCOMPARE(m_changes->count(), 2500);
}

void ForeignChangesTest::aWriteReadsAllOfOthersBeforeItself()
{
    const TestJob job = m_home->addJob();
    m_changes->begin();
    insertEvents(2500);
    remark(*m_here, job, "mine");
    QCOMPARE(m_changes->count(), 2500);
    m_changes->look();
    QCOMPARE(m_changes->count(), 2500);
}

void ForeignChangesTest::aFailureKeepsTheCount()
{
    const TestJob job = m_home->addJob();
    m_changes->begin();
    remark(*m_there, job, "one");
    m_changes->look();
    Database &other = m_there->context->database();
    other.run(QStringLiteral("ALTER TABLE events RENAME TO gone"));
    QVERIFY_EXCEPTION_THROWN(m_changes->look(), SqlError);
    QVERIFY_EXCEPTION_THROWN(m_changes->begin(), SqlError);
    QCOMPARE(m_changes->count(), 1);
    other.run(QStringLiteral("ALTER TABLE gone RENAME TO events"));
    const TestJob second = m_home->addJob();
    remark(*m_there, second, "two");
    m_changes->look();
    QCOMPARE(m_changes->count(), 2);
}

void ForeignChangesTest::whatALookCosts()
{
    m_changes->begin();
    insertEvents(100);
    QBENCHMARK
    {
        m_changes->look();
    }
    QCOMPARE(m_changes->count(), 100);
}

KODMS_TEST_MAIN(ForeignChangesTest, QCoreApplication)
#include "ForeignChangesTest.moc"
