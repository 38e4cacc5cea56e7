// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RequestScanner.h"
#include "tests/robot/support/Requests.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Robot::RequestScanner;
using State = RequestScanner::State;
Q_DECLARE_METATYPE(State)

/// Where a request ends, however its bytes arrive.
class RequestScannerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheEnd_data();
    void tellsTheEnd();
    void everyBeginningOfARequestIsIncomplete();
    void countsTheMembers();
    void theLimitIsExact();
    void longInputIsNotKept();
};

void RequestScannerTest::tellsTheEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<State>("expected");
    const auto row = [](const char *name, const QByteArray &bytes, State state) {
        QTest::newRow(name) << bytes << state;
    };
    row("a desk's request", KODMS::Tests::deskRequest(QStringLiteral("a1b000001")),
        State::Complete);
    row("an empty object", "{}", State::Complete);
    row("blanks around it", " \t\r\n{} \n\n", State::Complete);
    row("a brace in a text", "{\"a\": \"}\"", State::Incomplete);
    row("a brace in a text, closed", "{\"a\": \"}\"}", State::Complete);
    row("an escaped quote", "{\"a\": \"\\\"}\"", State::Incomplete);
    row("an escaped backslash before the quote", "{\"a\": \"\\\\\"}", State::Complete);
    row("brackets that do not match", "{]", State::Complete); // the parser says what is wrong
    row("nothing", "", State::Incomplete);
    row("blanks only", "  \n", State::Incomplete);
    row("a half object", "{\"module\": \"rob", State::Incomplete);
    row("an array", "[1]", State::Faulty);
    row("a text", "\"robot\"", State::Faulty);
    row("a closing brace", "}", State::Faulty);
    row("a byte order mark", "\xEF\xBB\xBF{}", State::Faulty);
    row("a NUL before", QByteArray("\0{}", 3), State::Faulty);
    row("a second object", "{}{}", State::Faulty);
    row("a word behind it", "{}\nx", State::Faulty);
    row("three levels", "{\"a\":{\"b\":{", State::Faulty);
    row("many levels", QByteArray(100000, '{'), State::Faulty);
    row("an array on the third level", "{\"a\":{\"b\":[", State::Faulty);
    row("too long", "{\"a\": \"" + QByteArray(20000, 'x'), State::Faulty);
    row("a web request", "GET / HTTP/1.1\r\n\r\n", State::Faulty);
}

void RequestScannerTest::tellsTheEnd()
{
    QFETCH(QByteArray, bytes);
    QFETCH(State, expected);
    RequestScanner whole;
    QCOMPARE(whole.feed(bytes.constData(), bytes.size()), expected);
    QCOMPARE(whole.fault().isEmpty(), expected != State::Faulty);
    if (bytes.contains("}{") || bytes.contains("}\n"))
        return; // in pieces, what follows the object comes too late
    RequestScanner pieces;
    for (const char byte : qAsConst(bytes))
        pieces.feed(&byte, 1);
    QCOMPARE(pieces.state(), expected);
    QCOMPARE(pieces.fault(), whole.fault());
    QCOMPARE(pieces.members(), whole.members());
    QCOMPARE(pieces.bytes().trimmed(), whole.bytes().trimmed());
}

void RequestScannerTest::everyBeginningOfARequestIsIncomplete()
{
    const QByteArray request = KODMS::Tests::deskRequest(QStringLiteral("线路板-01"));
    const int end = request.lastIndexOf('}') + 1;
    for (int size = 0; size < end; ++size) {
        RequestScanner scanner;
        QCOMPARE(scanner.feed(request.constData(), size), State::Incomplete);
    }
    RequestScanner scanner;
    QCOMPARE(scanner.feed(request.constData(), end), State::Complete);
    QCOMPARE(scanner.bytes(), request.left(end));
}

void RequestScannerTest::countsTheMembers()
{
    const QByteArray bytes = R"({"a": 1, "b:c": "d:e", "a": {"f": true, "f": ":"}})";
    RequestScanner scanner;
    QCOMPARE(scanner.feed(bytes.constData(), bytes.size()), State::Complete);
    QCOMPARE(scanner.members(), 5);
}

void RequestScannerTest::theLimitIsExact()
{
    const auto padded = [](int size) -> QByteArray {
        return "{\"a\":\"" + QByteArray(size - 8, 'x') + "\"}";
    };
    for (const int more : {0, 1}) {
        const QByteArray bytes = padded(RequestScanner::MostBytes + more);
        RequestScanner scanner;
        QCOMPARE(scanner.feed(bytes.constData(), bytes.size()),
                 more == 0 ? State::Complete : State::Faulty);
    }
}

void RequestScannerTest::longInputIsNotKept()
{
    RequestScanner scanner;
    const QByteArray piece(1000000, ' ');
    scanner.feed("{", 1);
    for (int i = 0; i < 100; ++i)
        scanner.feed(piece.constData(), piece.size());
    QCOMPARE(scanner.state(), State::Faulty);
    QVERIFY(scanner.bytes().size() <= RequestScanner::MostBytes);
}

KODMS_TEST_MAIN(RequestScannerTest, QCoreApplication)
#include "RequestScannerTest.moc"
