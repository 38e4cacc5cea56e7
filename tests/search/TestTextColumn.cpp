// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TextColumn.h"
#include "services/search/TextTest.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>

using namespace KODMS::Services;

/// Texts are found in the block as one finds them one by one.
class TestTextColumn : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTestOfOneText_data();
    void aTestOfOneText();
    void columnsFindWhatTheirTextsHave_data();
    void columnsFindWhatTheirTextsHave();
    void nothingIsFoundAcrossTwoTexts();
    void aTextMayBeLong();
    void aPartOfAnyLengthStaysWithinTheTexts();
    void repeatedTextsStandOnce();
};

namespace {

std::vector<std::string_view> viewsOf(const std::vector<std::string> &texts)
{
    return {texts.begin(), texts.end()};
}

std::string randomText(QRandomGenerator &random, int longest)
{
    static const std::string pieces[] = {"a", "A",  "b",  "B", "z", "0", "1", "_",
                                         "%", "深", "圳", "é", "É", "@", "["};
    constexpr int count = sizeof(pieces) / sizeof(pieces[0]);
    std::string text;
    for (int i = random.bounded(longest + 1); i > 0; --i)
        text += pieces[random.bounded(count)];
    return text;
}

int countOf(const TextColumn &column, const TextTest &test, int rows)
{
    RowBits found = RowBits::first(rows);
    column.keepMatching(test, found);
    return found.count();
}

} // namespace

void TestTextColumn::aTestOfOneText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<bool>("contains");
    QTest::newRow("other case") << QByteArray("WEB000001") << QByteArray("web") << true;
    QTest::newRow("other case asked") << QByteArray("web000001") << QByteArray("EB0") << true;
    QTest::newRow("at the end") << QByteArray("web000001") << QByteArray("001") << true;
    QTest::newRow("whole") << QByteArray("web") << QByteArray("Web") << true;
    QTest::newRow("longer") << QByteArray("web") << QByteArray("webx") << false;
    QTest::newRow("empty text") << QByteArray("") << QByteArray("w") << false;
    QTest::newRow("no wildcard") << QByteArray("a100b") << QByteArray("a%b") << false;
    QTest::newRow("@ is no letter") << QByteArray("@") << QByteArray("`") << false;
    QTest::newRow("[ is no letter") << QByteArray("{") << QByteArray("[") << false;
    QTest::newRow("only Latin letters fold") << QByteArray("É") << QByteArray("é") << false;
    QTest::newRow("Chinese") << QByteArray("深圳华信") << QByteArray("圳华") << true;
}

void TestTextColumn::aTestOfOneText()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, part);
    QFETCH(bool, contains);
    QCOMPARE(TextTest::contains(part.toStdString()).matches(text.toStdString()), contains);
    QVERIFY(TextTest::equal(text.toStdString()).matches(text.toStdString()));
    QVERIFY(!TextTest::equal(text.toStdString() + "x").matches(text.toStdString()));
    QVERIFY(TextTest::number(12).matches("0012"));
    QVERIFY(!TextTest::number(12).matches("12 "));
    QVERIFY(!TextTest::number(0).matches(""));
    QVERIFY(!TextTest::number(12).matches("0000000000000000012"));
}

void TestTextColumn::columnsFindWhatTheirTextsHave_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("longest");
    QTest::newRow("short texts, shared") << 4096 << 1;
    QTest::newRow("names") << 4096 << 12;
    QTest::newRow("of very different lengths") << 500 << 200;
    QTest::newRow("few") << 3 << 5;
    QTest::newRow("none") << 0 << 5;
}

void TestTextColumn::columnsFindWhatTheirTextsHave()
{
    QFETCH(int, rows);
    QFETCH(int, longest);
    QRandomGenerator random(9);
    std::vector<std::string> texts;
    for (int i = 0; i < rows; ++i)
        texts.push_back(randomText(random, i % 40 == 0 ? longest * 9 : longest));
    const TextColumn column(viewsOf(texts));
    for (int round = 0; round < 60; ++round) {
        const std::string part = randomText(random, 3) + "a";
        const TextTest test = round % 5 == 0 ? TextTest::equal(part) : TextTest::contains(part);
        RowBits among = RowBits::first(rows);
        if (round % 3 == 0) // so few that they are looked at one by one
            among = {};
        for (int row = 0; row < rows; row += 100)
            among.add(row);
        RowBits found = among;
        column.keepMatching(test, found);
        for (int row = 0; row < rows; ++row) {
            const std::string &text = texts[static_cast<std::size_t>(row)];
            QCOMPARE(std::string(column.at(row)), text);
            QCOMPARE(found.has(row), among.has(row) && test.matches(text));
        }
    }
}

void TestTextColumn::nothingIsFoundAcrossTwoTexts()
{
    const TextColumn column({"ab", "cd", "", "ab"});
    QCOMPARE(countOf(column, TextTest::contains("bc"), 4), 0);
    QCOMPARE(countOf(column, TextTest::contains("ab"), 4), 2);
    QCOMPARE(countOf(column, TextTest::contains("d"), 4), 1);
    QCOMPARE(countOf(column, TextTest::contains("abcd"), 4), 0);
}

void TestTextColumn::aTextMayBeLong()
{
    const std::string text = std::string(300000, 'x') + "needle";
    const TextColumn column({"a", text, "needle"});
    QCOMPARE(countOf(column, TextTest::contains("NEEDLE"), 3), 2);
    QCOMPARE(countOf(column, TextTest::contains(text), 3), 1);
    QCOMPARE(countOf(column, TextTest::contains(text + "x"), 3), 0);
}

/// A scan that looked for a part's end behind the last text would read foreign memory.
void TestTextColumn::aPartOfAnyLengthStaysWithinTheTexts()
{
    constexpr int longest = 200;
    std::vector<std::string> texts;
    for (int length = 0; length < longest; ++length)
        texts.emplace_back(static_cast<std::size_t>(length), length % 2 == 0 ? 'y' : 'z');
    const TextColumn column(viewsOf(texts));
    RowBits few;
    few.add(longest - 2);
    few.add(longest - 4);
    for (int length = 1; length <= longest; ++length) {
        const TextTest test =
            TextTest::contains(std::string(static_cast<std::size_t>(length), 'Y'));
        QCOMPARE(countOf(column, test, longest), (longest - length) / 2);
        RowBits found = few;
        column.keepMatching(test, found);
        QCOMPARE(found.count(), length > longest - 2 ? 0 : length > longest - 4 ? 1 : 2);
    }
}

void TestTextColumn::repeatedTextsStandOnce()
{
    std::vector<std::string> same;
    std::vector<std::string> different;
    for (int i = 0; i < 4096; ++i) {
        same.push_back("a remark that many write " + std::to_string(i % 20));
        different.push_back("a remark that many write " + std::to_string(i));
    }
    const TextColumn shared(viewsOf(same));
    const TextColumn own(viewsOf(different));
    QVERIFY(shared.isShared());
    QVERIFY(!own.isShared());
    QVERIFY(shared.bytes() < own.bytes() / 10);
}

KODMS_TEST_MAIN(TestTextColumn, QCoreApplication)
#include "TestTextColumn.moc"
