// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrdersBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/bll/User_ViewBll.h"
#include "foundation/common/DBS_API.h"
#include "services/records/Transaction.h"
#include "tests/bll/support/ChangingCases.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>

#include <functional>
#include <optional>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::RoleSet;
using Tests::TestJob;

namespace {

struct Read {
    const char *name;
    const char *table; ///< one that it cannot do without
    std::function<bool(const TestJob &)> call;
};

const std::vector<Read> reads{
    {"select flows", "job_flows",
     [](const TestJob &) {
         std::vector<Model::Odbpp_JobFlow> rows;
         return BLL::Odbpp_JobFlowBll().select({}, {}, rows);
     }},
    {"flow by GUID", "job_flows",
     [](const TestJob &job) {
         return BLL::Odbpp_JobFlowBll().getFlowByGuid(job.flowGuid).isPersist();
     }},
    {"select questions", "questions",
     [](const TestJob &) {
         std::vector<Model::Odbpp_Questions> rows;
         return BLL::Odbpp_QuestionsBll().select({}, {}, rows);
     }},
    {"select users", "users",
     [](const TestJob &) {
         std::vector<Model::User_View> rows;
         return BLL::User_ViewBll().select({}, {}, rows);
     }},
    {"order", "orders",
     [](const TestJob &job) {
         return BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(job.flowGuid).isPersist();
     }},
    {"robot parameters", "robot_params",
     [](const TestJob &job) { return !DBS_API::getWebRobotParaByJobName(job.jobName).empty(); }}};

} // namespace

/// A database that fails: no exception leaves a contract call, nothing is half
/// stored, and the failure is said once in the log and once to the user.
class FailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        if (!m_undo.isEmpty())
            m_home.database().run(m_undo);
        m_undo.clear();
        m_home.reset();
    }

    void changesOnAFailingDatabase_data();
    void changesOnAFailingDatabase();
    void readsOnAFailingDatabase_data();
    void readsOnAFailingDatabase();
    void aRefusalThatCannotBeAuditedIsStillARefusal();
    void theNoticeCallsTheJobByItsName();
    void withoutAFileStore();
    void aStoreThatCannotBeAskedIsNotTakenForAMissingFile_data();
    void aStoreThatCannotBeAskedIsNotTakenForAMissingFile();
    void aVerdictEndsWithItsFirstFailedStep_data();
    void aVerdictEndsWithItsFirstFailedStep();

private:
    void breakIt(const QString &how, const char *table);
    void rename(const QString &from, const QString &to);
    TestJob prepare(const Tests::ChangingCase &one);
    void closeConnections();

    Tests::RecordsHome m_home;
    std::optional<Services::Transaction> m_otherWriter;
    QString m_undo; ///< makes the tables whole again, which is quicker than to copy them
    int m_user = 0;
};

void FailuresTest::closeConnections()
{
    const QStringList names = QSqlDatabase::connectionNames();
    const QString own = m_home.place();
    for (const QString &name : names) {
        if (QSqlDatabase::database(name, false).databaseName() == own)
            QSqlDatabase::database(name, false).close();
    }
}

void FailuresTest::breakIt(const QString &how, const char *table)
{
    if (how == QLatin1String("closed"))
        closeConnections();
    else if (how == QLatin1String("read-only"))
        m_home.session().context->database().run(QStringLiteral("PRAGMA query_only = ON"));
    else if (how == QLatin1String("locked"))
        m_otherWriter.emplace(m_home.database());
    else if (how == QLatin1String("table gone"))
        rename(QLatin1String(table), QStringLiteral("gone"));
    else if (how == QLatin1String("audit gone"))
        rename(QStringLiteral("events"), QStringLiteral("gone"));
}

void FailuresTest::rename(const QString &from, const QString &to)
{
    const auto statement = QStringLiteral("ALTER TABLE %1 RENAME TO %2");
    m_home.database().run(statement.arg(from, to));
    m_undo = statement.arg(to, from);
}

TestJob FailuresTest::prepare(const Tests::ChangingCase &one)
{
    RoleSet everything;
    for (const Services::Role role : Services::allRoles())
        everything.insert(role);
    m_home.addUser(QStringLiteral("assignee"));
    m_user = m_home.addUser(QStringLiteral("somebody"), everything);
    const TestJob job = m_home.addJob(one.status, one.flag);
    if (one.prepare)
        one.prepare(m_home, job);
    m_home.signIn(m_user);
    return job;
}

/// A lost connection to a server is opened again, and what is written there is begun as
/// such: neither stops anything.
static bool stops(const char *how)
{
    return !Tests::TestDatabase::isServer() ||
           (qstrcmp(how, "closed") != 0 && qstrcmp(how, "read-only") != 0);
}

void FailuresTest::changesOnAFailingDatabase_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("how");
    for (std::size_t i = 0; i < Tests::changingCases().size(); ++i) {
        for (const char *how : {"closed", "read-only", "locked", "table gone", "audit gone"})
            if (stops(how))
                QTest::addRow("%s, %s", Tests::changingCases()[i].name, how)
                    << int(i) << QString::fromLatin1(how);
    }
}

void FailuresTest::changesOnAFailingDatabase()
{
    QFETCH(int, number);
    QFETCH(QString, how);
    const Tests::ChangingCase &one = Tests::changingCases()[std::size_t(number)];
    const TestJob job = prepare(one);
    const QString before = m_home.dump();
    breakIt(how, "users");
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^[a-z]+[.]\\w+ \\[.*\\] .+")));
    Tests::NoticeLog log;
    QVERIFY(!one.call(job, m_user));
    m_otherWriter.reset();
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Error));
    QVERIFY(m_home.files().removed.isEmpty());
    if (how == QLatin1String("read-only") || how == QLatin1String("locked") ||
        how == QLatin1String("audit gone"))
        QCOMPARE(m_home.dump(), before);
}

void FailuresTest::readsOnAFailingDatabase_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("how");
    for (std::size_t i = 0; i < reads.size(); ++i) {
        for (const char *how : {"closed", "table gone"})
            if (stops(how))
                QTest::addRow("%s, %s", reads[i].name, how) << int(i) << QString::fromLatin1(how);
    }
}

void FailuresTest::readsOnAFailingDatabase()
{
    QFETCH(int, number);
    QFETCH(QString, how);
    const Read &one = reads[std::size_t(number)];
    const TestJob job = prepare(Tests::changingCases().front());
    breakIt(how, one.table);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^[a-z]+[.]\\w+ \\[.*\\] .+")));
    Tests::NoticeLog log;
    QVERIFY(!one.call(job));
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Error));
}

void FailuresTest::aRefusalThatCannotBeAuditedIsStillARefusal()
{
    const TestJob job = m_home.addJob();
    const int nobody = m_home.addUser(QStringLiteral("ordinary"));
    m_home.signIn(nobody);
    breakIt(QStringLiteral("audit gone"), nullptr);
    Tests::NoticeLog log;
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateTips(nobody, "x", job.flowGuid));
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Warning));
}

/// Nobody knows a flow by its GUID, and the records cannot be asked: what was shown is remembered.
void FailuresTest::theNoticeCallsTheJobByItsName()
{
    const TestJob job = m_home.addJob();
    const int user = m_home.addUser(QStringLiteral("somebody"), RoleSet{Services::Role::Admin});
    m_home.signIn(user);
    for (const bool isShown : {false, true}) {
        if (isShown)
            m_home.show(m_home.session(), job);
        breakIt(QStringLiteral("table gone"), "job_flows");
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QString::fromStdString(job.flowGuid)));
        const Tests::NoticeLog log;
        QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateTips(user, "x", job.flowGuid));
        QCOMPARE(log.notices.size(), 1);
        const QString text = log.notices[0].text;
        QCOMPARE(text.contains(QString::fromStdString(job.jobName)), isShown);
        QCOMPARE(text.contains(QString::fromStdString(job.flowGuid)), !isShown);
        m_home.database().run(m_undo);
        m_undo.clear();
    }
}

void FailuresTest::withoutAFileStore()
{
    for (const Tests::ChangingCase &one : Tests::changingCases()) {
        if (qstrcmp(one.name, "record a stored file") != 0 &&
            qstrcmp(one.name, "delete a file") != 0)
            continue;
        m_home.reset();
        const TestJob job = prepare(one);
        m_home.session().context->setStoredFiles(nullptr);
        const QString before = m_home.dump();
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("no file store is open")));
        QVERIFY(!one.call(job, m_user));
        QCOMPARE(m_home.dump(), before);
    }
}

void FailuresTest::aStoreThatCannotBeAskedIsNotTakenForAMissingFile_data()
{
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Tests::ChangingCase &one : Tests::changingCases()) {
        for (const char *asking : {"record a stored file", "robot delivers",
                                   "state after a kos replacement", "rename the row's file"})
            if (qstrcmp(one.name, asking) == 0)
                QTest::newRow(one.name) << number;
        ++number;
    }
}

void FailuresTest::aStoreThatCannotBeAskedIsNotTakenForAMissingFile()
{
    QFETCH(int, number);
    const Tests::ChangingCase &one = Tests::changingCases()[std::size_t(number)];
    const TestJob job = prepare(one);
    const QString before = m_home.dump();
    m_home.files().isAway = true;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("the store is away")));
    const bool isDone = one.call(job, m_user);
    m_home.files().isAway = false;
    QVERIFY(!isDone);
    QCOMPARE(m_home.dump(), before);
    QVERIFY(one.call(job, m_user)); // once it is back
}

void FailuresTest::aVerdictEndsWithItsFirstFailedStep_data()
{
    QTest::addColumn<QString>("stop");
    QTest::addColumn<QString>("left");
    QTest::newRow("the job's flags")
        << QStringLiteral("UPDATE OF check_flag ON jobs") << QStringLiteral("0,0 1,1");
    QTest::newRow("the flow's state")
        << QStringLiteral("UPDATE OF check_flag ON job_flows") << QStringLiteral("2,2 1,1");
}

/// The caller asks for the later steps all the same. The flow has been reviewed before, so
/// that each of them would be allowed.
void FailuresTest::aVerdictEndsWithItsFirstFailedStep()
{
    QFETCH(QString, stop);
    QFETCH(QString, left);
    m_user = m_home.addUser(QStringLiteral("checker"), {Services::Role::Admin});
    const TestJob job = m_home.addJob(1, 1);
    m_home.signIn(m_user);
    const auto judge = [&] {
        BLL::Odbpp_JobBll().UpdateCheckFlag(m_user, 2, 2, job.jobName, job.flowId);
        BLL::Odbpp_JobFlowBll().UpdateState(m_user, 1, 2, job.flowGuid);
        BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, m_user, 0, {}, m_user, {},
                                                           0, {});
    };
    const auto stored = [&] {
        return m_home
            .one(QStringLiteral("SELECT j.pre_check_flag || ',' || j.check_flag || ' ' || "
                                "f.flow_status || ',' || f.check_flag || "
                                "coalesce(' by ' || f.check_user_id, '') AS value FROM "
                                "jobs j JOIN job_flows f ON f.job_name = j.name"))
            .toString();
    };
    const Tests::PlainConnection plain(m_home.settings());
    plain.refuse(stop, QStringLiteral("not today"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not today")));
    judge();
    QCOMPARE(stored(), left);
    plain.allow(stop);
    judge();
    QCOMPARE(stored(), QStringLiteral("2,2 1,2 by %1").arg(m_user));
}

KODMS_TEST_MAIN(FailuresTest, QCoreApplication)

#include "FailuresTest.moc"
