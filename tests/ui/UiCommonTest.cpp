// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"
#include "services/tasks/TaskRunner.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::TestDatabase;
using KODMS::UI::DMS_StdCommon;
using KODMS::UI::DMS_UICommon;

class UiCommonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyRoleAnswersItsOwnQuestion_data();
    void everyRoleAnswersItsOwnQuestion();
    void nobodySignedInHasNoRight();
    void noDatabaseMeansNoRight();
    void theCurrentUserIsTheActor();
    void globalSignalRefreshesBothDesks();
    void refreshWaitsForTheEndOfATask();
    void refreshOutsideATaskIsNotRepeated();
    void noticesAreRelayed();
    void jobsForTheCamSideAreHandedOn();
    void theInstanceIsOne();

private:
    static QList<bool> answers();

    TestDatabase m_place;
    std::unique_ptr<RecordContext> m_context;
};

void UiCommonTest::init()
{
    m_context = std::make_unique<RecordContext>(
        std::make_unique<Database>(m_place.settings(), Database::Open::Create));
    RecordContext::setCurrent(m_context.get());
}

void UiCommonTest::cleanup()
{
    m_context.reset();
}

QList<bool> UiCommonTest::answers()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    return {hub->hasAdminRole(),          hub->hasPreProcessRole(),
            hub->hasPreCheckAssignRole(), hub->hasTestAdminRole(),
            hub->hasCheckAuthority(),     hub->hasOrigFileUpdateAuthority(),
            hub->hasOrigFileAssignRole(), hub->hasShowCompanyNameRole()};
}

void UiCommonTest::everyRoleAnswersItsOwnQuestion_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<int>("question");
    for (const Role role : allRoles()) {
        const int number = static_cast<int>(role);
        QTest::newRow(qPrintable(roleName(role))) << number << (role == Role::Robot ? -1 : number);
    }
}

void UiCommonTest::everyRoleAnswersItsOwnQuestion()
{
    QFETCH(int, role);
    QFETCH(int, question);
    Actor actor;
    actor.userId = 5;
    actor.roles = {static_cast<Role>(role)};
    m_context->setActor(actor);
    const QList<bool> given = answers();
    for (int i = 0; i < given.size(); ++i)
        QVERIFY2(given[i] == (i == question), qPrintable(QString::number(i)));
}

void UiCommonTest::nobodySignedInHasNoRight()
{
    QVERIFY(!answers().contains(true));
}

void UiCommonTest::noDatabaseMeansNoRight()
{
    m_context.reset();
    QVERIFY(!answers().contains(true));
    QCOMPARE(DMS_StdCommon::interface()->getCurrentUser().id, 0);
}

void UiCommonTest::theCurrentUserIsTheActor()
{
    QCOMPARE(DMS_StdCommon::interface()->getCurrentUser().id, 0);
    m_context->setActor({7, QStringLiteral("wang"), QStringLiteral("王雅琴"), 3, 10, {}});
    const auto user = DMS_StdCommon::interface()->getCurrentUser();
    QCOMPARE(user.id, 7);
    QCOMPARE(user.loginName, std::string("wang"));
    QCOMPARE(user.realName, std::string("王雅琴"));
    QCOMPARE(user.department, 3);
    QCOMPARE(user.post, 10);
}

void UiCommonTest::globalSignalRefreshesBothDesks()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    const QSignalSpy files(hub, &DMS_UICommon::refreshOrigFileTable);
    const QSignalSpy jobs(hub, &DMS_UICommon::refreshExportJobTable);
    hub->emitGobalSingal();
    QCOMPARE(files.size(), 1);
    QCOMPARE(jobs.size(), 1);
}

void UiCommonTest::refreshWaitsForTheEndOfATask()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    QSignalSpy jobs(hub, &DMS_UICommon::refreshExportJobTable);
    const QSignalSpy files(hub, &DMS_UICommon::refreshOrigFileTable);
    const auto work = [hub](Progress &) {
        hub->emitGobalSingal();
        hub->emitGobalSingal();
        return Outcome::success();
    };
    QVERIFY(TaskRunner::instance().run(QStringLiteral("one row"), work));
    hub->emitGobalSingal(); // between two rows of one action
    QVERIFY(TaskRunner::instance().run(QStringLiteral("next row"), work));
    QCOMPARE(jobs.size(), 0);
    QVERIFY(jobs.wait(2000));
    QCoreApplication::processEvents();
    QCOMPARE(jobs.size(), 1);
    QCOMPARE(files.size(), 1);
}

void UiCommonTest::refreshOutsideATaskIsNotRepeated()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    const QSignalSpy jobs(hub, &DMS_UICommon::refreshExportJobTable);
    hub->emitGobalSingal();
    QSignalSpy idle(&TaskRunner::instance(), &TaskRunner::idle);
    QVERIFY(TaskRunner::instance().run(QString(), [](Progress &) { return Outcome::success(); }));
    QVERIFY(idle.wait(2000));
    QCOMPARE(jobs.size(), 1);
}

void UiCommonTest::noticesAreRelayed()
{
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    NoticeHub::instance().raise(NoticeLevel::Error, QStringLiteral("磁盘已满"));
    QCOMPARE(notices.size(), 1);
    QCOMPARE(notices.first().at(0).toInt(), 2);
    QCOMPARE(notices.first().at(1).toString(), QStringLiteral("磁盘已满"));
}

void UiCommonTest::jobsForTheCamSideAreHandedOn()
{
    DMS_UICommon *hub = DMS_UICommon::interface();
    const QSignalSpy imported(hub, &DMS_UICommon::camImportRequested);
    const QSignalSpy input(hub, &DMS_UICommon::camInputRequested);
    const QSignalSpy exported(hub, &DMS_UICommon::camExportRequested);
    hub->importNewJob(QStringLiteral("/d/a.tgz|p=1"), QStringLiteral("a"));
    hub->inputNewJob(QStringLiteral("b"), QStringLiteral("/d/b"));
    hub->sendemitCAMExportJobInfo(QStringLiteral("c"), 9);
    const QList<QVariant> first{QStringLiteral("/d/a.tgz|p=1"), QStringLiteral("a")};
    const QList<QVariant> second{QStringLiteral("b"), QStringLiteral("/d/b")};
    const QList<QVariant> third{QStringLiteral("c"), 9};
    QCOMPARE(imported.value(0), first);
    QCOMPARE(input.value(0), second);
    QCOMPARE(exported.value(0), third);
}

void UiCommonTest::theInstanceIsOne()
{
    QCOMPARE(DMS_UICommon::interface(), DMS_UICommon::interface());
    QCOMPARE(DMS_StdCommon::interface(), DMS_StdCommon::interface());
}

KODMS_TEST_MAIN(UiCommonTest, QCoreApplication)
#include "UiCommonTest.moc"
