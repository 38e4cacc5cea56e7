// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/JobHistory.h"

#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "services/api/SampleData.h"
#include "services/notices/Progress.h"
#include "services/records/bll/Audit.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::DataLib::BLL::Odbpp_JobFlowBll;
using KODMS::DataLib::BLL::Odbpp_QuestionsBll;

/// The audit trail of a job, as the host reads it back.
class JobHistoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_home.reset(); }

    void whoDidWhat();
    void aRefusalIsPartOfIt();
    void questionsOfTheJobBelongToIt();
    void filesAreNamedAsTheirOwnersDo();
    void aLongHistoryComesInPages();
    void onlyOfJobsInScope();
    void nobodyAndNothing();

private:
    QString guid(int flow) const
    {
        return m_home
            ->value(QStringLiteral("SELECT guid FROM job_flows ORDER BY id LIMIT 1 OFFSET %1")
                        .arg(flow))
            .toString();
    }

    int flowId(int flow) const
    {
        return m_home
            ->value(
                QStringLiteral("SELECT id FROM job_flows ORDER BY id LIMIT 1 OFFSET %1").arg(flow))
            .toInt();
    }

    QVector<HistoryEntry> entries(int flow) const
    {
        return JobHistory::of(guid(flow)).value.entries;
    }

    bool remark(int user, const char *text, int flow)
    {
        return Odbpp_JobFlowBll().UpdateTips(user, text, guid(flow).toStdString());
    }

    std::unique_ptr<TestInstallation> m_home;
    int m_admin = 0;
};

void JobHistoryTest::init()
{
    m_home = std::make_unique<TestInstallation>();
    m_admin = m_home->actAsAdmin();
    NoProgress progress;
    SampleRequest request;
    request.flows = 40;
    QVERIFY(SampleData::generate(request, progress).ok);
}

void JobHistoryTest::whoDidWhat()
{
    const int before = entries(0).size();
    QVERIFY(remark(m_admin, "first", 0));
    QVERIFY(remark(m_admin, "二", 0));
    QVERIFY(remark(m_admin, "of another job", 1));
    const auto history = JobHistory::of(guid(0));
    QVERIFY(history);
    QVERIFY(!history.value.jobName.isEmpty());
    QVERIFY(!history.value.hasOlder);
    QCOMPARE(history.value.entries.size(), before + 2);
    const HistoryEntry &last = history.value.entries.first();
    QCOMPARE(last.action, QStringLiteral("remark.UpdateTips"));
    QCOMPARE(last.before, QStringLiteral("first"));
    QCOMPARE(last.after, QStringLiteral("二"));
    QVERIFY(!last.who.isEmpty());
    QVERIFY(!last.isRefused);
    QCOMPARE(last.time.size(), 19);
    QVERIFY(last.id > history.value.entries.at(1).id);
}

void JobHistoryTest::aRefusalIsPartOfIt()
{
    const int user = m_home->actAs(QStringLiteral("stranger"), {});
    const NoticeLog log;
    QVERIFY(!remark(user, "not mine", 0));
    m_home->actAsAdmin();
    const HistoryEntry last = entries(0).value(0);
    QCOMPARE(last.action, QStringLiteral("remark.UpdateTips"));
    QVERIFY(last.isRefused);
}

void JobHistoryTest::questionsOfTheJobBelongToIt()
{
    m_home->database().run(
        QStringLiteral("INSERT INTO questions (flow_id, title, description, check_flag, "
                       "create_time) VALUES (%1, 'drill sizes', '', 0, '2026-01-01')")
            .arg(flowId(0)));
    const int question =
        m_home->value(QStringLiteral("SELECT id FROM questions WHERE title = 'drill sizes'"))
            .toInt();
    QVERIFY(Odbpp_QuestionsBll().UpdateQuestionStatus(question, 2, m_admin));
    const HistoryEntry last = entries(0).value(0);
    QCOMPARE(last.action, QStringLiteral("question.UpdateQuestionStatus"));
    QCOMPARE(last.about, QStringLiteral("drill sizes"));
    QCOMPARE(last.after, QStringLiteral("2"));
    QVERIFY(entries(1).isEmpty() || entries(1).first().action != last.action);
}

void JobHistoryTest::filesAreNamedAsTheirOwnersDo()
{
    const auto say = [this](const char *action, const QString &before, const QString &after) {
        writeAudit(m_home->database(),
                   {m_admin, QString::fromLatin1(action), QStringLiteral("flow"), flowId(0),
                    QString(), before, after, false});
        return entries(0).first();
    };
    const QString stored = m_home
                               ->value(QStringLiteral("SELECT stored_name FROM orig_files "
                                                      "WHERE file_type = 'tgz' LIMIT 1"))
                               .toString();
    const QString name = m_home
                             ->value(QStringLiteral("SELECT base_name || '.tgz' FROM orig_files "
                                                    "WHERE stored_name = '%1'")
                                         .arg(stored))
                             .toString();
    QVERIFY(!stored.isEmpty() && name != stored);
    const HistoryEntry file = say("file.importJob", QStringLiteral("long gone.tgz"), stored);
    QCOMPARE(file.before, QStringLiteral("long gone.tgz"));
    QCOMPARE(file.after, name);
    QCOMPARE(say("intake.take", QString(), stored).after, name);
    QCOMPARE(say("state.robotResult", QString(), stored).after, name);
    const HistoryEntry renamed =
        say("file.UpdateZipUUID_OrigName", QStringLiteral("power board ") + stored,
            QStringLiteral("power board B ") + stored);
    QCOMPARE(renamed.before, QStringLiteral("power board"));
    QCOMPARE(renamed.after, QStringLiteral("power board B"));
    QCOMPARE(say("remark.UpdateTips", QString(), stored).after, stored); // somebody wrote that
}

void JobHistoryTest::aLongHistoryComesInPages()
{
    const int before = entries(0).size();
    for (int i = 0; i < 250; ++i)
        writeAudit(m_home->database(),
                   {m_admin, QStringLiteral("remark.UpdateTips"), QStringLiteral("flow"), flowId(0),
                    QString(), QString(), QString::number(i), false});
    QStringList told;
    qint64 from = 0;
    int pages = 0;
    for (bool hasOlder = true; hasOlder; ++pages) {
        const auto page = JobHistory::of(guid(0), from);
        QVERIFY(page);
        QVERIFY(page.value.entries.size() <= JobHistory::pageSize);
        for (const HistoryEntry &entry : page.value.entries)
            told << entry.after;
        from = page.value.entries.last().id;
        hasOlder = page.value.hasOlder;
    }
    QCOMPARE(pages, 3);
    QCOMPARE(told.size(), before + 250);
    for (int i = 0; i < 250; ++i)
        QCOMPARE(told.at(i), QString::number(249 - i));
}

void JobHistoryTest::onlyOfJobsInScope()
{
    const int user = m_home->actAs(QStringLiteral("stranger"), {});
    const NoticeLog log;
    QVERIFY(!JobHistory::of(guid(0)));
    QCOMPARE(log.notices.size(), 1);
    m_home->database().run(QStringLiteral("UPDATE job_flows SET create_user_id = %1 WHERE id = %2")
                               .arg(user)
                               .arg(flowId(0)));
    QVERIFY(JobHistory::of(guid(0)));
    QVERIFY(!JobHistory::of(guid(1)));
}

void JobHistoryTest::nobodyAndNothing()
{
    m_home->signOut();
    QVERIFY(!JobHistory::of(guid(0)));
    m_home->actAsAdmin();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("history.read")));
    QVERIFY(!JobHistory::of(QStringLiteral("no such flow")));
}

KODMS_TEST_MAIN(JobHistoryTest, QCoreApplication)
#include "JobHistoryTest.moc"
