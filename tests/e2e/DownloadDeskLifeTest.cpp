// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/FileRecords.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTableWidget>

#include <algorithm>
#include <memory>

using namespace KODMS::Tests;

/// The original-file desk on the real services: people of a sample installation
/// type, choose, page and sort; the database is read past the services to compare.
class DownloadDeskLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { m_house = std::make_unique<SampleHouse>(1000); }

    void cleanupTestCase() { m_house.reset(); }

    void init() { m_house->signIn(QStringLiteral("admin")); }

    void theSampleHasEveryKindOfFile();
    void anAdministratorSeesTheNewestFilesFirst();
    void everyComboItemFindsWhatTheRecordsSay_data();
    void everyComboItemFindsWhatTheRecordsSay();
    void everythingFindsAnyFieldAndTheSerialNumber_data();
    void everythingFindsAnyFieldAndTheSerialNumber();
    void aTestAdministratorDoesNotSearchCustomersNames();
    void aChineseNameIsFoundAsItIsCommitted();
    void allPagesTogetherAreAllFiles();
    void narrowingOnALaterPageLandsOnTheLastPage();
    void refreshKeepsThePageAndTheFilter();
    void headerClicksSortWhatIsShown();
    void peopleStartWithTheirHistory_data();
    void peopleStartWithTheirHistory();
    void aPreProcessorSearchesTheHistoryByJobName();
    void anOrdinaryUserGetsOnlyOwnFiles_data();
    void anOrdinaryUserGetsOnlyOwnFiles();
    void whoSeesCustomersGetsAllFilesAfterARefresh();
    void awkwardTermsAreHarmless_data();
    void awkwardTermsAreHarmless();

private:
    const RecordProbe &records() const { return m_house->records(); }

    QStringList ids(const QString &where) const
    {
        return records().texts(fileRecords(QStringLiteral("c.id"), where));
    }

    std::unique_ptr<SampleHouse> m_house;
};

namespace {

constexpr int All = 0;
constexpr int Page = 30;

/// What the search over everything asks of the records, for one term.
QString anyField(const QString &term, bool customers)
{
    QStringList fields{QStringLiteral("c.orig_name"), QStringLiteral("k.code"),
                       QStringLiteral("c.tips"), QStringLiteral("u.real_name")};
    if (customers)
        fields << QStringLiteral("k.short_name") << QStringLiteral("k.superior_1")
               << QStringLiteral("k.superior_2");
    QStringList tests;
    for (const QString &field : qAsConst(fields))
        tests << QStringLiteral("lower(%1) LIKE lower('%%2%')").arg(field, term);
    tests << QStringLiteral("c.serial_number = %1").arg(term.toInt());
    return QLatin1Char('(') + tests.join(QStringLiteral(" OR ")) + QLatin1Char(')');
}

QString historyOf(int user)
{
    return QStringLiteral("(f.flow_status = 2 OR f.flow_status = 3 AND f.check_flag = 2) AND "
                          "(f.last_import_user_id = %1 OR f.create_user_id = %1 "
                          "OR o.executor_id = %1 OR p.executor_id = %1)")
        .arg(user);
}

} // namespace

void DownloadDeskLifeTest::theSampleHasEveryKindOfFile()
{
    QCOMPARE(records().number(QStringLiteral("SELECT count(*) FROM job_compress")), 1000);
    const QStringList types = records().texts(
        QStringLiteral("SELECT DISTINCT file_type FROM orig_files WHERE kind = 0 ORDER BY 1"));
    for (const char *type : {"", "kos", "rar", "tgz", "zip"})
        QVERIFY2(types.contains(QLatin1String(type)), type);
    QVERIFY(!ids(QStringLiteral("k.code = 'web'")).isEmpty());
    QVERIFY(!ids(QStringLiteral("k.superior_1 <> '' AND k.superior_2 <> ''")).isEmpty());
}

void DownloadDeskLifeTest::anAdministratorSeesTheNewestFilesFirst()
{
    const DownloadUser user;
    QCOMPARE(user.column(DownloadUser::FileId), ids(QString()).mid(0, Page));
    QCOMPARE(user.pageTotal(), QStringLiteral("/ 34"));
}

void DownloadDeskLifeTest::everyComboItemFindsWhatTheRecordsSay_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("term");
    QTest::addColumn<QString>("where");
    QTest::newRow("original name") << 1 << "POWER"
                                   << "lower(c.orig_name) LIKE '%power%'";
    QTest::newRow("customer code") << 2 << "We"
                                   << "lower(k.code) LIKE '%we%'";
    QTest::newRow("serial number") << 3 << "12"
                                   << "c.serial_number = 12";
    QTest::newRow("serial number as it is shown") << 3 << "000012"
                                                  << "c.serial_number = 12";
    QTest::newRow("no serial number") << 3 << "twelve"
                                      << "c.serial_number = 0";
    QTest::newRow("remark") << 4 << "FTP"
                            << "lower(c.tips) LIKE '%ftp%'";
}

void DownloadDeskLifeTest::everyComboItemFindsWhatTheRecordsSay()
{
    QFETCH(int, item);
    QFETCH(QString, term);
    QFETCH(QString, where);
    const DownloadUser user;
    user.choose(item);
    user.type(term);
    const QStringList found = ids(where);
    QCOMPARE(found.isEmpty(), term == QLatin1String("twelve"));
    QCOMPARE(user.column(DownloadUser::FileId), found.mid(0, Page));
}

void DownloadDeskLifeTest::everythingFindsAnyFieldAndTheSerialNumber_data()
{
    QTest::addColumn<QString>("term");
    QTest::newRow("a number") << "12";
    QTest::newRow("letters") << "adapter";
    QTest::newRow("one letter") << "e";
    QTest::newRow("a long number") << "1234";
}

void DownloadDeskLifeTest::everythingFindsAnyFieldAndTheSerialNumber()
{
    QFETCH(QString, term);
    const DownloadUser user;
    user.type(term);
    const QStringList found = ids(anyField(term, true));
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(DownloadUser::FileId), found.mid(0, Page));
    QCOMPARE(user.pageTotal(), QStringLiteral("/ %1").arg((found.size() + Page - 1) / Page));
}

/// A word that stands in customers' names alone.
void DownloadDeskLifeTest::aTestAdministratorDoesNotSearchCustomersNames()
{
    const QString term = records().text(QStringLiteral(
        "SELECT substr(short_name, 1, 4) FROM customers WHERE length(short_name) >= 4 "
        "AND id IN (SELECT customer_id FROM job_compress) LIMIT 1"));
    QVERIFY(!ids(anyField(term, true)).isEmpty());
    QVERIFY(ids(anyField(term, false)).isEmpty());
    m_house->signIn(QStringLiteral("testadmin"));
    const DownloadUser user;
    QCOMPARE(user.column(DownloadUser::FileId), ids(QString()).mid(0, Page));
    user.commit("m_pFilterLE", term);
    QCOMPARE(user.table()->rowCount(), 0);
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser admin;
    admin.commit("m_pFilterLE", term);
    QCOMPARE(admin.column(DownloadUser::FileId), ids(anyField(term, true)).mid(0, Page));
}

/// Input methods commit whole words; every commit is an edit.
void DownloadDeskLifeTest::aChineseNameIsFoundAsItIsCommitted()
{
    const QString name = records().text(QStringLiteral(
        "SELECT u.real_name FROM orig_file_assign a JOIN users u ON u.id = a.executor_id LIMIT 1"));
    QVERIFY(name.size() >= 2);
    const DownloadUser user;
    user.choose(5);
    user.commit("m_pFilterLE", name);
    const QStringList found = ids(QStringLiteral("u.real_name LIKE '%%1%'").arg(name));
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(DownloadUser::FileId), found.mid(0, Page));
}

void DownloadDeskLifeTest::allPagesTogetherAreAllFiles()
{
    const DownloadUser user;
    QStringList seen = user.column(DownloadUser::FileId);
    for (int page = 2; page <= 34; ++page) {
        user.click("m_pPageDownPB");
        seen << user.column(DownloadUser::FileId);
    }
    QCOMPARE(seen, ids(QString()));
    user.click("m_pFirstPagePB");
    QCOMPARE(user.column(DownloadUser::FileId), seen.mid(0, Page));
}

void DownloadDeskLifeTest::narrowingOnALaterPageLandsOnTheLastPage()
{
    const DownloadUser user;
    user.choose(1);
    user.click("m_pLastPagePB");
    QCOMPARE(user.column(DownloadUser::FileId).size(), 10);
    user.type(QStringLiteral("led"));
    const QStringList found = ids(QStringLiteral("lower(c.orig_name) LIKE '%led%'"));
    QVERIFY(!found.isEmpty());
    QCOMPARE(user.column(DownloadUser::FileId), found.mid((found.size() - 1) / Page * Page));
}

void DownloadDeskLifeTest::refreshKeepsThePageAndTheFilter()
{
    const DownloadUser user;
    user.choose(2);
    user.type(QStringLiteral("web"));
    user.click("m_pPageDownPB");
    const QStringList second = ids(QStringLiteral("lower(k.code) LIKE '%web%'")).mid(Page, Page);
    QVERIFY(!second.isEmpty());
    QCOMPARE(user.column(DownloadUser::FileId), second);
    user.click("m_pRefreshPB");
    QCOMPARE(user.column(DownloadUser::FileId), second);
}

void DownloadDeskLifeTest::headerClicksSortWhatIsShown()
{
    const DownloadUser user;
    QStringList sorted = user.column(DownloadUser::Serial);
    std::sort(sorted.begin(), sorted.end());
    user.clickHeader(DownloadUser::Serial);
    QCOMPARE(user.column(DownloadUser::Serial), sorted);
    std::reverse(sorted.begin(), sorted.end());
    user.clickHeader(DownloadUser::Serial);
    QCOMPARE(user.column(DownloadUser::Serial), sorted);
    user.click("m_pRefreshPB");
    QCOMPARE(user.column(DownloadUser::FileId), ids(QString()).mid(0, Page));
}

void DownloadDeskLifeTest::peopleStartWithTheirHistory_data()
{
    QTest::addColumn<QString>("login");
    QTest::newRow("pre-processor") << "prepare";
    QTest::newRow("reviewer") << "review";
    QTest::newRow("file updater") << "files";
    QTest::newRow("sees customers' names") << "names";
    QTest::newRow("ordinary user") << "user";
}

void DownloadDeskLifeTest::peopleStartWithTheirHistory()
{
    QFETCH(QString, login);
    const int id = m_house->signIn(login);
    const QStringList found = records().flows(historyOf(id));
    QVERIFY(!found.isEmpty());
    const DownloadUser user;
    QCOMPARE(user.column(DownloadUser::HistoryJobName), found.mid(0, Page));
}

void DownloadDeskLifeTest::aPreProcessorSearchesTheHistoryByJobName()
{
    const int id = m_house->signIn(QStringLiteral("prepare"));
    const QString job = records().flows(historyOf(id)).first();
    const DownloadUser user;
    user.type(job);
    QCOMPARE(user.column(DownloadUser::HistoryJobName),
             records().flows(historyOf(id)).mid(0, Page));
    user.choose(1);
    QCOMPARE(user.column(DownloadUser::HistoryJobName), QStringList({job}));
}

void DownloadDeskLifeTest::anOrdinaryUserGetsOnlyOwnFiles_data()
{
    QTest::addColumn<QString>("login");
    for (const char *login : {"user", "review", "files", "assign", "dispatch"})
        QTest::newRow(login) << QString::fromLatin1(login);
}

/// Everybody's files have a source, and most sources are words that a term finds.
void DownloadDeskLifeTest::anOrdinaryUserGetsOnlyOwnFiles()
{
    QFETCH(QString, login);
    const int id = m_house->signIn(login);
    const QString own = QStringLiteral("a.executor_id = %1").arg(id);
    const QString term = QStringLiteral("e");
    QVERIFY(!ids(own).isEmpty());
    QVERIFY(ids(anyField(term, false)).size() >
            ids(own + QStringLiteral(" AND ") + anyField(term, false)).size());
    const DownloadUser user;
    user.click("m_pRefreshPB");
    QCOMPARE(user.column(DownloadUser::FileId), ids(own).mid(0, Page));
    user.choose(All);
    user.type(term);
    QCOMPARE(user.column(DownloadUser::FileId),
             ids(own + QStringLiteral(" AND ") + anyField(term, false)).mid(0, Page));
}

void DownloadDeskLifeTest::whoSeesCustomersGetsAllFilesAfterARefresh()
{
    m_house->signIn(QStringLiteral("names"));
    const DownloadUser user;
    QVERIFY(user.column(DownloadUser::FileId) != ids(QString()).mid(0, Page));
    user.click("m_pRefreshPB");
    QCOMPARE(user.column(DownloadUser::FileId), ids(QString()).mid(0, Page));
}

void DownloadDeskLifeTest::awkwardTermsAreHarmless_data()
{
    QTest::addColumn<QString>("term");
    QTest::newRow("quote") << "' OR '1'='1";
    QTest::newRow("percent") << "%";
    QTest::newRow("backslash") << "\\";
    QTest::newRow("outside the basic plane") << QStringLiteral("😀");
    QTest::newRow("a long one") << QString(30000, QLatin1Char('x'));
}

/// None of them stands in any field, and there is no serial number 0.
void DownloadDeskLifeTest::awkwardTermsAreHarmless()
{
    QFETCH(QString, term);
    const DownloadUser user;
    user.commit("m_pFilterLE", term);
    QCOMPARE(user.table()->rowCount(), 0);
    QCOMPARE(records().number(QStringLiteral("SELECT count(*) FROM job_compress")), 1000);
}

KODMS_TEST_MAIN(DownloadDeskLifeTest, QApplication)
#include "DownloadDeskLifeTest.moc"
