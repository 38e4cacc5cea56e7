// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/Lists.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

void expectFailure(const char *pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QLatin1String(pattern)));
}

} // namespace

/// Lists that nobody sends by accident: awkward texts, bad fields and brackets,
/// sizes beyond reason. The answer is right, or the refusal is clear.
class TestHostileLists : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void badListsAreRefused_data();
    void badListsAreRefused();
    void aNulMatchesNothing();
    void whatIsNoTextMatchesNothing();
    void aTextOfAMebibyteIsSearched();
    void tenThousandConditionsAreAnswered();
    void tenThousandBracketsAreAnsweredOrRefused();
    void aTextIsFoundWhateverItIs_data();
    void aTextIsFoundWhateverItIs();

private:
    std::unique_ptr<ViewFixture> m_fixture;
};

void TestHostileLists::init()
{
    m_fixture = std::make_unique<ViewFixture>();
}

void TestHostileLists::badListsAreRefused_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("log");
    QTest::newRow("unknown field") << 0 << "unknown field: job_flows.id";
    QTest::newRow("field of the other view") << 1 << "unknown field: KoName";
    QTest::newRow("unknown sort field") << 2 << "unknown field to sort by: 1; DROP";
    QTest::newRow("bracket not closed") << 3 << "not closed";
    QTest::newRow("bracket not opened") << 4 << "not opened";
    QTest::newRow("page start") << 5 << "page window";
    QTest::newRow("negative page size") << 6 << "page window";
    QTest::newRow("unknown bracket") << 7 << "unknown bracket";
    QTest::newRow("unknown second sort field") << 8 << "unknown field to sort by: secret";
}

void TestHostileLists::badListsAreRefused()
{
    QFETCH(int, kind);
    QFETCH(QString, log);
    m_fixture->addFlow(1, QStringLiteral("J1"));
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "", true)}));
    List list = sorted({condition("KoJobName", "J", true)});
    switch (kind) {
    case 0:
        list[0].fieldName = "job_flows.id";
        break;
    case 1:
        list[0].fieldName = "KoName";
        break;
    case 2:
        list[1].sortField = "1; DROP";
        break;
    case 3:
        list[0].openBracket = 1;
        break;
    case 4:
        list[0].closeBracket = 2;
        break;
    case 5:
        list = paged(list, "first", "30");
        break;
    case 6:
        list = paged(list, "0", "-30");
        break;
    case 8:
        list.push_back(list[1]);
        list[2].sortField = "secret";
        break;
    default:
        list[0].openBracket = 5;
        break;
    }
    expectFailure(log.toLatin1().constData());
    QVERIFY(!m_fixture->searchFlows(list));
    QVERIFY(m_fixture->flows.empty());
    QCOMPARE(m_fixture->total, 0);
    // A bad count list is refused as well.
    expectFailure(log.toLatin1().constData());
    QVERIFY(!m_fixture->searchFlows({condition("KoJobName", "", true)}, list));
    QVERIFY(m_fixture->flows.empty());
}

void TestHostileLists::aNulMatchesNothing()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    expectFailure("NUL");
    expectFailure("NUL");
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", std::string("J\0", 2), true)}));
    QCOMPARE(m_fixture->total, 0);
    expectFailure("NUL");
    expectFailure("NUL");
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "J1", false),
                                    either(condition("KoJobName", std::string("\0", 1), false))}));
    QCOMPARE(m_fixture->total, 1);
}

/// Half a surrogate pair, and a sign cut in two: read as something else they would match.
void TestHostileLists::whatIsNoTextMatchesNothing()
{
    m_fixture->addFlow(1, QString(QChar::ReplacementCharacter).repeated(3));
    for (const char *bytes : {"\xed\xa0\x80", "\xe5\x9c", "\xff"}) {
        for (const bool isPart : {false, true}) {
            expectFailure("no UTF-8");
            expectFailure("no UTF-8");
            QVERIFY(m_fixture->searchFlows({condition("KoJobName", bytes, isPart)}));
            QCOMPARE(m_fixture->total, 0);
        }
    }
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "\xef\xbf\xbd", true)}));
    QCOMPARE(m_fixture->total, 1);
}

void TestHostileLists::aTextOfAMebibyteIsSearched()
{
    const QString large = QString(1 << 20, QLatin1Char('x')) + QStringLiteral("Y");
    m_fixture->addFlow(1, QStringLiteral("J1"), large);
    m_fixture->addFlow(2, QStringLiteral("J2"));
    QVERIFY(
        m_fixture->searchOrigFiles({condition("OrigName", large.toUpper().toStdString(), true)}));
    QCOMPARE(m_fixture->origFileIds(), QVector<int>{1});
    QVERIFY(m_fixture->searchOrigFiles({condition("OrigName", large.toStdString(), false)}));
    QCOMPARE(m_fixture->origFileIds(), QVector<int>{1});
    const QString signs = QString(1 << 19, QLatin1Char('%'));
    QVERIFY(m_fixture->searchOrigFiles({condition("OrigName", signs.toStdString(), true)}));
    QCOMPARE(m_fixture->total, 0);
}

void TestHostileLists::tenThousandConditionsAreAnswered()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    m_fixture->addFlow(2, QStringLiteral("J2"));
    List any;
    List all;
    for (int i = 0; i < 10000; ++i) {
        any.push_back(either(condition("KoJobName", "nothing" + std::to_string(i), true)));
        all.push_back(condition("Flow_UploadBatchNum", i % 2 == 0 ? "0" : " 0", false));
    }
    any.push_back(either(condition("KoJobName", "j2", true)));
    all.push_back(condition("KoJobName", "j1", true));
    QVERIFY(m_fixture->searchFlows(any));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{2});
    QVERIFY(m_fixture->searchFlows(all));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
}

void TestHostileLists::tenThousandBracketsAreAnsweredOrRefused()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    List plain; // ((((J and J) and J) ... the brackets mean nothing
    List mixed; // (a or (b and (a or (b and ...
    for (int i = 0; i < 10000; ++i) {
        auto record = condition("KoJobName", "J", true);
        record.openBracket = 1;
        plain.push_back(record);
        record.value += std::to_string(i);
        record.orWithPrevious = i % 2;
        mixed.push_back(record);
    }
    for (int i = 0; i < 10000; ++i) {
        auto record = condition("KoJobName", "J", true);
        record.closeBracket = 2;
        plain.push_back(record);
        record.value += std::to_string(i);
        mixed.push_back(record);
    }
    QVERIFY(m_fixture->searchFlows(plain));
    QCOMPARE(m_fixture->total, 1);
    expectFailure("nested too deeply");
    QVERIFY(!m_fixture->searchFlows(mixed));
    QCOMPARE(m_fixture->total, 0);
}

void TestHostileLists::aTextIsFoundWhateverItIs_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("other"); // a text that a careless search would find, too
    const auto row = [](const char *name, const char *stored, const char *wanted,
                        const char *other) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(wanted)
                            << QString::fromUtf8(other);
    };
    row("single quote", "it's", "'", "its");
    row("double quote", "17\" board", "\"", "17 board");
    row("statement", "'; DROP TABLE job_flows; --", "'; DROP TABLE", "DROP TABLE");
    row("percent sign", "50%off", "0%o", "500 for");
    row("underscore", "a_b", "a_b", "axb");
    row("backslash", "c:\\jobs", ":\\j", "c:jobs");
    row("backslash and percent", "a\\%b", "\\%", "a%b");
    row("brackets", "x[1]", "[1]", "x1");
    row("star", "a*b", "*", "ab");
    row("placeholder", "what?:x", "?:x", "what");
    row("Chinese, one sign", "深圳华信", "华", "深圳");
    row("Chinese, two signs", "深圳华信", "圳华", "华信圳");
    row("emoji", "ok😀!", "😀", "ok!");
    row("space", "two words", "o w", "twowords");
    row("Latin, either case", "MainBoard", "NBOA", "Main");
    row("line break", "a\nb", "\n", "ab");
}

void TestHostileLists::aTextIsFoundWhateverItIs()
{
    QFETCH(QString, stored);
    QFETCH(QString, wanted);
    QFETCH(QString, other);
    m_fixture->addFlow(1, stored, stored);
    m_fixture->addFlow(2, other, other);
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", wanted.toStdString(), true)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
    QVERIFY(m_fixture->searchOrigFiles({condition("OrigName", wanted.toStdString(), true)}));
    QCOMPARE(m_fixture->origFileIds(), QVector<int>{1});
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", stored.toStdString(), false)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
}

KODMS_TEST_MAIN(TestHostileLists, QCoreApplication)
#include "TestHostileLists.moc"
