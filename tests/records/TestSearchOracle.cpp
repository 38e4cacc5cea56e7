// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "services/records/RecordContext.h"
#include "tests/records/support/RandomConditions.h"
#include "tests/records/support/RandomRecords.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QTest>

using namespace KODMS::DataLib;
using namespace KODMS::Services;
using KODMS::Tests::RandomConditions;
using KODMS::Tests::RandomRecords;
using KODMS::Tests::SearchOracle;
using KODMS::Tests::TempDatabase;

/// 10,000 random condition lists over random records, 3,000 on a server: the view services
/// and a plain look at every row give the same rows, in the same order, and the same count.
class TestSearchOracle : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void flowsAgreeWithTheOracle();
    void originalFilesAgreeWithTheOracle();

private:
    template <typename Service, typename Row>
    void compare(SearchOracle::View view, quint32 seed, int lists);

    TempDatabase m_database;
    std::unique_ptr<RecordContext> m_context;
};

namespace {

/// A search on a server is several journeys there and back.
int lists()
{
    return KODMS::Tests::TestDatabase::isServer() ? 1500 : 5000;
}

QString describe(const SearchOracle::List &list)
{
    QString text;
    for (const auto &record : list)
        text +=
            QStringLiteral("%1%2%3 %4 '%5'%6%7%8\n")
                .arg(record.orWithPrevious == 1 ? QStringLiteral("OR ") : QStringLiteral("AND "),
                     record.openBracket == 1 ? QStringLiteral("(") : QString(),
                     QString::fromStdString(record.fieldName),
                     record.fuzzy == 1 ? QStringLiteral("~") : QStringLiteral("="),
                     QString::fromStdString(record.value),
                     record.closeBracket == 2 ? QStringLiteral(")") : QString(),
                     record.numericValue == 1 ? QStringLiteral(" numeric") : QString(),
                     record.sortEnabled == 1
                         ? QStringLiteral(" sort ") + QString::fromStdString(record.sortField)
                         : QString());
    return text;
}

} // namespace

void TestSearchOracle::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("kodms.records.warning=false"));
    RandomRecords(20261121).fill(*m_database, 250);
    m_context = std::make_unique<RecordContext>(m_database.take());
    RecordContext::setCurrent(m_context.get());
}

template <typename Service, typename Row>
void TestSearchOracle::compare(SearchOracle::View view, quint32 seed, int lists)
{
    const SearchOracle oracle(view, m_context->database());
    QCOMPARE(oracle.rows().size(), 250);
    RandomConditions random(oracle, seed);
    int found = 0;
    for (int i = 0; i < lists; ++i) {
        SearchOracle::List counted = random.list();
        SearchOracle::List conditions = counted;
        random.addPage(conditions);
        m_context->setActor(random.actor());
        const SearchOracle::Answer expected = oracle.ask(conditions, counted, m_context->actor());
        std::vector<Row> rows;
        int total = -1;
        QVERIFY2(Service().selectAndCountBySearchModel(conditions, counted, rows, total),
                 qPrintable(describe(conditions)));
        QVector<int> ids;
        for (const Row &row : rows)
            ids << row.id;
        if (ids != expected.ids || total != expected.count)
            QFAIL(qPrintable(QStringLiteral("list %1: %2 rows of %3, expected %4 of %5\n")
                                 .arg(i)
                                 .arg(ids.size())
                                 .arg(total)
                                 .arg(expected.ids.size())
                                 .arg(expected.count) +
                             describe(conditions)));
        found += ids.isEmpty() ? 0 : 1;
    }
    // Lists that find nothing prove little: at least a third has to find something.
    QVERIFY2(found > lists / 3, qPrintable(QString::number(found)));
}

void TestSearchOracle::flowsAgreeWithTheOracle()
{
    compare<BLL::Odbpp_Flow_ViewBll, Model::Odbpp_Flow_View>(SearchOracle::View::Flow, 1, lists());
}

void TestSearchOracle::originalFilesAgreeWithTheOracle()
{
    compare<BLL::Odbpp_OrigFile_ViewBll, Model::Odbpp_OrigFile_View>(SearchOracle::View::OrigFile,
                                                                     2, lists());
}

KODMS_TEST_MAIN(TestSearchOracle, QCoreApplication)
#include "TestSearchOracle.moc"
