// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SearchIndex.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "services/api/SignIn.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS;
using namespace KODMS::Services;
using KODMS::Tests::Installation;

namespace {

constexpr int patience = 30'000;

} // namespace

/// What people are told of the search index.
class SearchIndexTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_home.reset(); }

    void itIsThereWhetherOrNotAnybodySearchesAgain();
    void itTellsItsSizeAndTime();
    void withoutServices();

private:
    static void search();

    std::unique_ptr<Installation> m_home;
};

/// One flow with so large a number that an index is worth it.
void SearchIndexTest::init()
{
    m_home = std::make_unique<Installation>();
    m_home->initAndStart();
    for (const char *sql : {"INSERT INTO customers (code, create_time) VALUES ('web', '')",
                            "INSERT INTO jobs (name, customer_id, serial_number, create_time) "
                            "VALUES ('web000001', 1, 1, '')",
                            "INSERT INTO job_flows (id, guid, job_name, create_time) "
                            "VALUES (1000000, 'g1', 'web000001', '2024-03-18T00:00:00.000Z')"})
        Runtime::current()->records().database().run(QString::fromLatin1(sql));
    QVERIFY(SignIn::signIn(m_home->login(), m_home->password()));
}

void SearchIndexTest::search()
{
    DataLib::Model::DB_Search condition;
    condition.fieldName = "KoJobName";
    condition.value = "WEB";
    condition.fuzzy = 1;
    std::vector<DataLib::Model::DB_Search> list{condition};
    std::vector<DataLib::Model::DB_Search> counted = list;
    std::vector<DataLib::Model::Odbpp_Flow_View> rows;
    int total = 0;
    DataLib::BLL::Odbpp_Flow_ViewBll flows;
    QVERIFY(flows.selectAndCountBySearchModel(list, counted, rows, total));
    QCOMPARE(total, 1);
}

void SearchIndexTest::itIsThereWhetherOrNotAnybodySearchesAgain()
{
    QVERIFY(!SearchIndex::state().isReady);
    search(); // the database answers, and the reading begins
    QTRY_VERIFY_WITH_TIMEOUT(SearchIndex::state().isReady, patience);
    search();
}

void SearchIndexTest::itTellsItsSizeAndTime()
{
    QVERIFY(!SearchIndex::state().isReady);
    const SearchIndexState state = SearchIndex::load();
    QVERIFY(state.isReady);
    QCOMPARE(state.flows, 1);
    QCOMPARE(state.origFiles, 0);
    QVERIFY(state.bytes > 0);
    QVERIFY(state.milliseconds > 0);
    QVERIFY2(state.text.startsWith(QStringLiteral("1 个流程，0 个原始文件，0.")),
             qPrintable(state.text));
}

void SearchIndexTest::withoutServices()
{
    m_home.reset();
    QVERIFY(!SearchIndex::state().isReady);
    QVERIFY(!SearchIndex::load().isReady);
    QCOMPARE(SearchIndex::state().text, QStringLiteral("未启用，由数据库直接查询"));
}

KODMS_TEST_MAIN(SearchIndexTest, QCoreApplication)
#include "SearchIndexTest.moc"
