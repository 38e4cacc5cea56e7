// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// The job-flow desk on the real services: a sample installation, people who sign
/// in, type, click and page; the database is read past the services to compare.
class ExportDeskLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void anAdministratorSeesTheNewestFlowsFirst();
    void typingNarrowsTheFlows_data();
    void typingNarrowsTheFlows();
    void aChineseNameIsFoundAsItIsCommitted();
    void everyStatusItemFindsWhatTheRecordsSay_data();
    void everyStatusItemFindsWhatTheRecordsSay();
    void allPagesTogetherAreAllFlows();
    void narrowingOnALaterPageLandsOnTheLastPage();
    void nothingFoundAndBackAgain();
    void aClickShowsTheQuestionsOfTheRecords();
    void aRemarkIsTypedAndStored_data();
    void aRemarkIsTypedAndStored();
    void anotherDeskShowsTheRemarkAfterARefresh();
    void headerClicksSortWhatIsShown();
    void peopleSeeTheirOwnUnfinishedFlows_data();
    void peopleSeeTheirOwnUnfinishedFlows();
    void preCheckersCanBePicked();
    void awkwardTermsAreHarmless_data();
    void awkwardTermsAreHarmless();

private:
    const RecordProbe &records() const { return m_house->records(); }

    std::unique_ptr<SampleHouse> m_house;
};

void ExportDeskLifeTest::initTestCase()
{
    m_house = std::make_unique<SampleHouse>(1000);
    QCOMPARE(records().number(QStringLiteral("SELECT count(*) FROM job_flows")), 1000);
}

void ExportDeskLifeTest::cleanupTestCase()
{
    m_house.reset();
}

void ExportDeskLifeTest::init()
{
    m_house->signIn(QStringLiteral("admin"));
}

void ExportDeskLifeTest::anAdministratorSeesTheNewestFlowsFirst()
{
    ExportUser user;
    const QStringList all = records().flows(QString());
    QCOMPARE(user.column(ExportUser::JobName), all.mid(0, 30));
    QCOMPARE(user.pageTotal(), QStringLiteral("/ 34"));
}

void ExportDeskLifeTest::typingNarrowsTheFlows_data()
{
    QTest::addColumn<QByteArray>("edit");
    QTest::addColumn<QString>("term");
    QTest::addColumn<QString>("where");
    QTest::newRow("digits of a job name") << QByteArray("m_pJobFilterLE") << "0012"
                                          << "f.job_name LIKE '%0012%'";
    QTest::newRow("job name in small letters") << QByteArray("m_pJobFilterLE") << "web0"
                                               << "lower(f.job_name) LIKE '%web0%'";
    QTest::newRow("batch") << QByteArray("m_pCheckerFilterLE") << "2"
                           << "CAST(f.batch_number AS TEXT) LIKE '%2%'";
}

void ExportDeskLifeTest::typingNarrowsTheFlows()
{
    QFETCH(QByteArray, edit);
    QFETCH(QString, term);
    QFETCH(QString, where);
    ExportUser user;
    QTest::keyClicks(user.control<QLineEdit>(edit.constData()), term);
    const QStringList found = records().flows(where);
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(ExportUser::JobName), found.mid(0, 30));
}

/// Input methods commit whole words; every commit is an edit.
void ExportDeskLifeTest::aChineseNameIsFoundAsItIsCommitted()
{
    const QString name = records().text(QStringLiteral(
        "SELECT u.real_name FROM orig_file_assign o JOIN users u ON u.id = o.executor_id LIMIT 1"));
    QVERIFY(name.size() >= 2);
    ExportUser user;
    user.commit("m_pPrerFilterLE", name.left(2));
    const QStringList found = records().flows(
        QStringLiteral("o.executor_id IN (SELECT id FROM users WHERE real_name LIKE '%%1%')")
            .arg(name.left(2)));
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(ExportUser::JobName), found.mid(0, 30));
    QVERIFY(user.column(ExportUser::PreProcessor).first().contains(name.left(2)));
}

void ExportDeskLifeTest::everyStatusItemFindsWhatTheRecordsSay_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("where");
    QTest::newRow("all") << 0 << QString();
    QTest::newRow("awaiting pre-processing") << 1 << "f.flow_status = 0 AND f.check_flag = 0";
    QTest::newRow("awaiting review") << 2 << "f.flow_status = 1 AND f.check_flag = 0";
    QTest::newRow("failed") << 3 << "f.check_flag = 1";
    QTest::newRow("passed") << 4 << "f.check_flag = 2";
    QTest::newRow("finished, which no flow is in this list") << 5 << "f.check_flag = 3";
    QTest::newRow("at the robot") << 6 << "f.flow_status = 2 AND f.check_flag = 0";
}

void ExportDeskLifeTest::everyStatusItemFindsWhatTheRecordsSay()
{
    QFETCH(int, index);
    QFETCH(QString, where);
    ExportUser user;
    user.control<QComboBox>("m_pStatusFilterCMB")->setCurrentIndex(index);
    QCOMPARE(user.column(ExportUser::JobName), records().flows(where).mid(0, 30));
}

void ExportDeskLifeTest::allPagesTogetherAreAllFlows()
{
    ExportUser user;
    QStringList seen = user.column(ExportUser::JobName);
    for (int page = 2; page <= 34; ++page) {
        user.click("m_pPageDownPB");
        seen << user.column(ExportUser::JobName);
    }
    QCOMPARE(seen, records().flows(QString()));
    user.click("m_pFirstPagePB");
    QCOMPARE(user.column(ExportUser::JobName), seen.mid(0, 30));
}

void ExportDeskLifeTest::narrowingOnALaterPageLandsOnTheLastPage()
{
    ExportUser user;
    user.click("m_pLastPagePB");
    QCOMPARE(user.column(ExportUser::JobName).size(), 10);
    QTest::keyClicks(user.control<QLineEdit>("m_pJobFilterLE"), QStringLiteral("00001"));
    const QStringList found = records().flows(QStringLiteral("f.job_name LIKE '%00001%'"));
    QVERIFY(!found.isEmpty());
    const int lastPage = (found.size() - 1) / 30;
    QCOMPARE(user.column(ExportUser::JobName), found.mid(lastPage * 30));
}

void ExportDeskLifeTest::nothingFoundAndBackAgain()
{
    ExportUser user;
    auto *edit = user.control<QLineEdit>("m_pJobFilterLE");
    QTest::keyClicks(edit, QStringLiteral("???"));
    QCOMPARE(user.table()->rowCount(), 0);
    QVERIFY(user.table()->signalsBlocked());
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QCOMPARE(user.table()->rowCount(), 30);
    QVERIFY(!user.table()->signalsBlocked());
}

void ExportDeskLifeTest::aClickShowsTheQuestionsOfTheRecords()
{
    const QString job = records().text(
        QStringLiteral("SELECT f.job_name FROM job_flows f JOIN questions q ON q.flow_id = f.id "
                       "GROUP BY f.id ORDER BY count(*) DESC, f.id DESC LIMIT 1"));
    QVERIFY(!job.isEmpty());
    ExportUser user;
    QTest::keyClicks(user.control<QLineEdit>("m_pJobFilterLE"), job);
    user.clickCell(0, ExportUser::JobName);
    const auto *questions = user.control<QTableWidget>("m_pQuestionTableWidget");
    QStringList titles;
    for (int row = 0; row < questions->rowCount(); ++row)
        titles << questions->item(row, 1)->text();
    QCOMPARE(titles,
             records().texts(QStringLiteral("SELECT q.title FROM questions q JOIN job_flows f "
                                            "ON f.id = q.flow_id WHERE f.job_name = '%1' "
                                            "ORDER BY q.create_time, q.id")
                                 .arg(job)));
    QVERIFY(!titles.isEmpty());
}

void ExportDeskLifeTest::aRemarkIsTypedAndStored_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("in the remark") << int(ExportUser::Remark);
    QTest::newRow("in the job name, which keeps its record") << int(ExportUser::JobName);
}

void ExportDeskLifeTest::aRemarkIsTypedAndStored()
{
    QFETCH(int, column);
    ExportUser user;
    const QString job = user.column(ExportUser::JobName).at(3);
    const QString remark = QStringLiteral("urgent %1 %_'\"").arg(column);
    user.typeInto(3, column, remark);
    QCOMPARE(
        records().text(QStringLiteral("SELECT tips FROM job_flows WHERE job_name = '%1'").arg(job)),
        remark);
    user.click("m_pRefreshPB");
    QCOMPARE(user.column(ExportUser::JobName).at(3), job);
    QCOMPARE(user.column(ExportUser::Remark).at(3), remark);
}

void ExportDeskLifeTest::anotherDeskShowsTheRemarkAfterARefresh()
{
    ExportUser user;
    ExportUser other;
    user.typeInto(0, ExportUser::Remark, QStringLiteral("seen by both"));
    QVERIFY(other.column(ExportUser::Remark).first() != QLatin1String("seen by both"));
    KODMS::UI::DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(other.column(ExportUser::Remark).first(), QStringLiteral("seen by both"));
    QCOMPARE(user.column(ExportUser::Remark).first(), QStringLiteral("seen by both"));
}

void ExportDeskLifeTest::headerClicksSortWhatIsShown()
{
    ExportUser user;
    QStringList sorted = user.column(ExportUser::JobName);
    std::sort(sorted.begin(), sorted.end(), [](const QString &left, const QString &right) {
        return left.localeAwareCompare(right) < 0; // as tables do
    });
    user.clickHeader(ExportUser::JobName);
    QCOMPARE(user.column(ExportUser::JobName), sorted);
    user.clickHeader(ExportUser::JobName);
    std::reverse(sorted.begin(), sorted.end());
    QCOMPARE(user.column(ExportUser::JobName), sorted);
    const QString job = user.column(ExportUser::JobName).first();
    user.typeInto(0, ExportUser::Remark, QStringLiteral("after sorting"));
    QCOMPARE(
        records().text(QStringLiteral("SELECT tips FROM job_flows WHERE job_name = '%1'").arg(job)),
        QStringLiteral("after sorting"));
}

void ExportDeskLifeTest::peopleSeeTheirOwnUnfinishedFlows_data()
{
    QTest::addColumn<QString>("login");
    QTest::newRow("pre-checker") << QStringLiteral("review");
    QTest::newRow("executor") << QStringLiteral("prepare");
    QTest::newRow("ordinary user") << QStringLiteral("user");
}

void ExportDeskLifeTest::peopleSeeTheirOwnUnfinishedFlows()
{
    QFETCH(QString, login);
    m_house->signIn(login);
    ExportUser user;
    const QString where =
        QStringLiteral("(j.create_user_id = %1 OR f.create_user_id = %1 OR o.executor_id = %1 "
                       "OR p.executor_id = %1) AND (f.flow_status < 2 AND f.check_flag <= 2 "
                       "OR f.flow_status = 2 AND f.check_flag < 2)")
            .arg(SignIn::current().id);
    const QStringList found = records().flows(where);
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(ExportUser::JobName), found.mid(0, 30));
}

void ExportDeskLifeTest::preCheckersCanBePicked()
{
    ExportUser user;
    const auto *combo = user.control<QComboBox>("m_pAssignerCMB");
    QStringList offered;
    for (int index = 0; index < combo->count(); ++index)
        offered << combo->itemText(index);
    QStringList expected = records().texts(
        QStringLiteral("SELECT real_name FROM users WHERE department = 3 AND post = 10 "
                       "AND disabled = 0"));
    QVERIFY(expected.contains(QStringLiteral("王雅琴")));
    offered.sort();
    expected.sort();
    QCOMPARE(offered, expected);
}

void ExportDeskLifeTest::awkwardTermsAreHarmless_data()
{
    QTest::addColumn<QString>("term");
    QTest::newRow("quote") << "' OR '1'='1";
    QTest::newRow("percent") << "%";
    QTest::newRow("underscore") << "_";
    QTest::newRow("backslash") << "\\";
    QTest::newRow("outside the basic plane") << QStringLiteral("😀");
    QTest::newRow("a long one") << QString(30000, QLatin1Char('x'));
}

/// None of them stands in a job name, so none may find one.
void ExportDeskLifeTest::awkwardTermsAreHarmless()
{
    QFETCH(QString, term);
    ExportUser user;
    user.commit("m_pJobFilterLE", term);
    QCOMPARE(user.table()->rowCount(), 0);
    QCOMPARE(records().number(QStringLiteral("SELECT count(*) FROM job_flows")), 1000);
}

KODMS_TEST_MAIN(ExportDeskLifeTest, QApplication)
#include "ExportDeskLifeTest.moc"
