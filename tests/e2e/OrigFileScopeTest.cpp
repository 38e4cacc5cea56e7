// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "services/api/SignIn.h"
#include "tests/e2e/FileRecords.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace KODMS::DataLib;
using namespace KODMS::Tests;
using List = std::vector<Model::DB_Search>;

Q_DECLARE_METATYPE(List)

/// Whoever has no view of all customers gets their own files from the service,
/// whatever the condition list says.
class OrigFileScopeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { m_house = std::make_unique<SampleHouse>(600); }

    void cleanupTestCase() { m_house.reset(); }

    void listsThatAskForMore_data();
    void listsThatAskForMore();
    void theCountIsKeptInScopeToo();
    void brokenListsGiveNothing_data();
    void brokenListsGiveNothing();
    void randomListsNeverReachAnothersFile_data();
    void randomListsNeverReachAnothersFile();
    void nobodyGetsNothing();
    void theScopeFollowsWhoIsSignedIn();

private:
    int countOf(int user) const
    {
        return m_house->records().number(
            QStringLiteral("SELECT count(*) FROM orig_file_assign WHERE executor_id = %1")
                .arg(user));
    }

    std::unique_ptr<SampleHouse> m_house;
};

namespace {

const char *const TextFields[] = {"OrigName",    "KoName",      "KoCode",          "FileTips",
                                  "SuperiorCo1", "SuperiorCo2", "PreUser_RealName"};

struct Answer {
    bool ok = false;
    int total = 0;
    std::vector<Model::Odbpp_OrigFile_View> rows;
};

Answer ask(List conditions, List countConditions)
{
    Answer answer;
    answer.ok = BLL::Odbpp_OrigFile_ViewBll().selectAndCountBySearchModel(
        conditions, countConditions, answer.rows, answer.total);
    return answer;
}

Answer ask(const List &list)
{
    return ask(list, list);
}

Model::DB_Search like(const char *field, const char *text)
{
    Model::DB_Search record;
    record.fieldName = field;
    record.value = text;
    record.fuzzy = 1;
    return record;
}

Model::DB_Search equal(const char *field, const std::string &text)
{
    Model::DB_Search record = like(field, text.c_str());
    record.fuzzy = 0;
    return record;
}

Model::DB_Search orJoined(Model::DB_Search record)
{
    record.orWithPrevious = 1;
    return record;
}

/// As the desk sends it: the user's own files AND a name OR anything else.
List everything(int user, const char *text)
{
    List list{equal("PreUser_id", std::to_string(user))};
    for (const char *field : TextFields)
        list.push_back(list.size() < 2 ? like(field, text) : orJoined(like(field, text)));
    auto serial = orJoined(equal("JobSerialNumber", "0"));
    serial.numericValue = 1;
    list.push_back(serial);
    serial.sortEnabled = 1;
    serial.sortField = "FlowTable_CreateTime";
    serial.sortDirection = 1;
    list.push_back(serial);
    return list;
}

bool allOf(const Answer &answer, int user)
{
    for (const auto &row : answer.rows)
        if (row.preUserId != user)
            return false;
    return true;
}

Model::DB_Search randomCondition(QRandomGenerator &random, int people)
{
    const char *const numbers[] = {"PreUser_id", "JobSerialNumber", "OrigFile_Id"};
    const int kind = random.bounded(10);
    Model::DB_Search record =
        kind < 7 ? like(TextFields[kind], random.bounded(2) ? "" : "e")
                 : equal(numbers[kind - 7], std::to_string(random.bounded(1, people)));
    record.orWithPrevious = random.bounded(2);
    record.numericValue = random.bounded(2);
    return record;
}

/// Brackets that balance, joins as they fall.
List randomList(QRandomGenerator &random, int people)
{
    List list;
    int open = 0;
    const int length = random.bounded(1, 9);
    for (int i = 0; i < length; ++i) {
        auto record = randomCondition(random, people);
        if (random.bounded(3) == 0) {
            record.openBracket = 1;
            ++open;
        }
        if (open > 0 && random.bounded(2)) {
            record.closeBracket = 2;
            --open;
        }
        list.push_back(record);
    }
    for (; open > 0; --open) {
        auto record = randomCondition(random, people);
        record.closeBracket = 2;
        list.push_back(record);
    }
    return list;
}

} // namespace

void OrigFileScopeTest::listsThatAskForMore_data()
{
    const int user = m_house->signIn(QStringLiteral("user"));
    const int other = m_house->signIn(QStringLiteral("review"));
    QTest::addColumn<List>("list");
    QTest::addColumn<bool>("findsOwn");
    QTest::newRow("everything, as the desk sends it") << everything(user, "") << true;
    QTest::newRow("everything of somebody else") << everything(other, "") << true;
    QTest::newRow("no user at all") << List{like("OrigName", "")} << true;
    QTest::newRow("no conditions") << List() << true;
    QTest::newRow("somebody else's files")
        << List{equal("PreUser_id", std::to_string(other))} << false;
    QTest::newRow("own files or anything")
        << List{equal("PreUser_id", std::to_string(user)), orJoined(like("OrigName", ""))} << true;
    QTest::newRow("own files or somebody else's")
        << List{equal("PreUser_id", std::to_string(user)),
                orJoined(equal("PreUser_id", std::to_string(other)))}
        << true;
    QTest::newRow("a user id that contains nothing") << List{like("PreUser_id", "")} << true;
    auto opened = like("OrigName", "");
    opened.openBracket = 1;
    auto closed = orJoined(like("KoCode", ""));
    closed.closeBracket = 2;
    QTest::newRow("a bracket that holds everything") << List{opened, closed} << true;
    auto window = like("OrigName", "");
    window.pageEnabled = 1;
    window.pageStart = "0";
    window.pageSize = "1000000";
    QTest::newRow("one page of everything") << List{window} << true;
    QTest::newRow("a value that looks like a statement")
        << List{equal("OrigName", "' OR 1=1 --")} << false;
}

void OrigFileScopeTest::listsThatAskForMore()
{
    QFETCH(List, list);
    QFETCH(bool, findsOwn);
    const int user = m_house->signIn(QStringLiteral("user"));
    QVERIFY(countOf(user) > 0);
    const Answer answer = ask(list);
    QVERIFY(answer.ok);
    QCOMPARE(answer.total, findsOwn ? countOf(user) : 0);
    QCOMPARE(answer.rows.empty(), !findsOwn);
    QVERIFY(allOf(answer, user));
    // The same list of somebody who sees all customers does reach other people's.
    m_house->signIn(QStringLiteral("names"));
    const Answer control = ask(list);
    QVERIFY(control.ok);
    if (findsOwn)
        QVERIFY(control.total > answer.total);
}

void OrigFileScopeTest::theCountIsKeptInScopeToo()
{
    const int user = m_house->signIn(QStringLiteral("user"));
    const Answer answer =
        ask(List{equal("PreUser_id", std::to_string(user))}, List{like("OrigName", "")});
    QVERIFY(answer.ok);
    QCOMPARE(answer.total, countOf(user));
}

void OrigFileScopeTest::brokenListsGiveNothing_data()
{
    QTest::addColumn<List>("list");
    QTest::addColumn<QString>("problem");
    auto closing = like("OrigName", "");
    closing.closeBracket = 2;
    QTest::newRow("a bracket that closes the scope")
        << List{closing, orJoined(like("OrigName", ""))} << "a bracket is closed";
    auto opening = like("OrigName", "");
    opening.openBracket = 1;
    QTest::newRow("a bracket left open") << List{opening} << "a bracket is not closed";
    QTest::newRow("a field that is a statement")
        << List{like("1=1 OR OrigName", "")} << "unknown field";
    auto sorted = like("OrigName", "");
    sorted.sortEnabled = 1;
    sorted.sortField = "PreUser_id OR 1=1";
    QTest::newRow("an order that is a statement") << List{sorted} << "unknown field to sort by";
}

void OrigFileScopeTest::brokenListsGiveNothing()
{
    QFETCH(List, list);
    QFETCH(QString, problem);
    m_house->signIn(QStringLiteral("user"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(problem)));
    const Answer answer = ask(list);
    QVERIFY(!answer.ok);
    QVERIFY(answer.rows.empty());
    QCOMPARE(answer.total, 0);
}

void OrigFileScopeTest::randomListsNeverReachAnothersFile_data()
{
    QTest::addColumn<QString>("login");
    for (const char *login : {"user", "prepare", "dispatch", "review", "files", "assign", "robot"})
        QTest::newRow(login) << QString::fromLatin1(login);
}

void OrigFileScopeTest::randomListsNeverReachAnothersFile()
{
    QFETCH(QString, login);
    const int user = m_house->signIn(login);
    const int own = countOf(user);
    const int people = m_house->records().number(QStringLiteral("SELECT max(id) FROM users"));
    QRandomGenerator random(20261121);
    int found = 0;
    for (int i = 0; i < 200; ++i) {
        const Answer answer = ask(randomList(random, people));
        QVERIFY(answer.ok);
        QVERIFY(answer.total <= own);
        QVERIFY(allOf(answer, user));
        found += answer.total;
    }
    QCOMPARE(found > 0, own > 0);
}

void OrigFileScopeTest::nobodyGetsNothing()
{
    m_house->signIn(QStringLiteral("user"));
    KODMS::Services::SignIn::signOut();
    const Answer answer = ask(List{like("OrigName", "")});
    QVERIFY(answer.rows.empty());
    QCOMPARE(answer.total, 0);
}

void OrigFileScopeTest::theScopeFollowsWhoIsSignedIn()
{
    for (const char *login : {"user", "review", "user", "files"}) {
        const int user = m_house->signIn(QString::fromLatin1(login));
        const Answer answer = ask(List{like("OrigName", "")});
        QCOMPARE(answer.total, countOf(user));
        QVERIFY(allOf(answer, user));
    }
    m_house->signIn(QStringLiteral("testadmin"));
    QCOMPARE(ask(List{like("OrigName", "")}).total, 600);
}

KODMS_TEST_MAIN(OrigFileScopeTest, QCoreApplication)
#include "OrigFileScopeTest.moc"
