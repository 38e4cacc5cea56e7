// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotRequest.h"
#include "apps/robot/RequestScanner.h"
#include "apps/robot/RobotAnswer.h"
#include "apps/robot/RobotLog.h"
#include "tests/robot/support/Requests.h"
#include "tests/support/TestMain.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace KODMS::Robot;

/// What a request may say, and how it is answered and logged.
class RobotRequestTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goodRequests_data();
    void goodRequests();
    void badRequests_data();
    void badRequests();
    void answers();
    void namesInTheLog_data();
    void namesInTheLog();

private:
    static KODMS::Services::Result<RobotRequest> read(const QByteArray &bytes);
};

KODMS::Services::Result<RobotRequest> RobotRequestTest::read(const QByteArray &bytes)
{
    RequestScanner scanner;
    if (scanner.feed(bytes.constData(), bytes.size()) != RequestScanner::State::Complete)
        return KODMS::Services::Outcome::failure(QStringLiteral("not complete: ") +
                                                 scanner.fault());
    return RobotRequest::read(scanner);
}

void RobotRequestTest::goodRequests_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("jobName");
    QTest::addColumn<bool>("fromWeb");
    const auto row = [](const char *name, const QByteArray &bytes, const char *job, bool web) {
        QTest::newRow(name) << bytes << QString::fromUtf8(job) << web;
    };
    using KODMS::Tests::deskRequest;
    row("as a desk writes it", deskRequest(QStringLiteral("ABC-01")), "abc-01", false);
    row("of the web", deskRequest(QStringLiteral("WEB000001"), true), "web000001", true);
    row("a web job after a replacement", deskRequest(QStringLiteral("web000001")), "web000001",
        false);
    row("a Chinese name", deskRequest(QStringLiteral("线路板 1")), "线路板 1", false);
    row("the longest name", deskRequest(QString(500, QLatin1Char('a'))),
        QByteArray(500, 'a').constData(), false);
    row("on one line, in another order",
        R"({"msgType":1,"msgParams":{"jobname":"a","fromWeb":false},"module":"robot"})", "a",
        false);
    row("the number written otherwise",
        R"({"module":"robot","msgType":1.0,"msgParams":{"fromWeb":false,"jobname":"a"}})", "a",
        false);
    row("escaped letters",
        R"({"module":"rob\u006ft","msgType":1,"msgParams":{"fromWeb":false,"jobname":"\u7ebf"}})",
        "线", false);
    row("colons and braces in the name", deskRequest(QStringLiteral("a:{b}:c")), "a:{b}:c", false);
}

void RobotRequestTest::goodRequests()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, jobName);
    QFETCH(bool, fromWeb);
    const auto request = read(bytes);
    QVERIFY2(request, qPrintable(request.text()));
    QCOMPARE(request.value.jobName, jobName);
    QCOMPARE(request.value.fromWeb, fromWeb);
}

void RobotRequestTest::badRequests_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const QByteArray &bytes, const char *reason) {
        QTest::newRow(name) << bytes << QString::fromUtf8(reason);
    };
    const auto outer = [](const QByteArray &members) -> QByteArray {
        return "{" + members + R"("msgParams":{"fromWeb":false,"jobname":"a"}})";
    };
    const auto inner = [](const QByteArray &params) -> QByteArray {
        return R"({"module":"robot","msgType":1,"msgParams":)" + params + "}";
    };
    const auto named = [&inner](const QByteArray &name) -> QByteArray {
        return inner(R"({"fromWeb":false,"jobname":")" + name + "\"}");
    };
    row("empty object", "{}", "\"module\" is missing");
    row("no module", outer(R"("msgType":1,)"), "\"module\" is missing");
    row("module is a number", outer(R"("module":1,"msgType":1,)"), "not a text");
    row("another module", outer(R"("module":"Robot","msgType":1,)"), "not \"robot\"");
    row("module is empty", outer(R"("module":"","msgType":1,)"), "not \"robot\"");
    row("no message type", outer(R"("module":"robot",)"), "\"msgType\" is missing");
    row("message type is a text", outer(R"("module":"robot","msgType":"1",)"), "not a number");
    row("message type is true", outer(R"("module":"robot","msgType":true,)"), "not a number");
    row("message type 2", outer(R"("module":"robot","msgType":2,)"), "not 1");
    row("message type 1.5", outer(R"("module":"robot","msgType":1.5,)"), "not 1");
    row("message type -1", outer(R"("module":"robot","msgType":-1,)"), "not 1");
    row("message type 1e400", outer(R"("module":"robot","msgType":1e400,)"), "");
    row("a key too many", outer(R"("module":"robot","msgType":1,"x":0,)"), "nobody knows");
    row("a key in capitals", outer(R"("Module":"robot","msgType":1,)"), "\"module\" is missing");
    row("module twice", outer(R"("module":"robot","module":"robot","msgType":1,)"), "twice");
    row("module twice, once otherwise", outer(R"("module":"x","module":"robot","msgType":1,)"),
        "twice");
    row("module twice, once escaped",
        outer(R"("module":"robot","\u006dodule":"robot","msgType":1,)"), "twice");
    row("parameters missing", R"({"module":"robot","msgType":1})", "\"msgParams\" is missing");
    row("parameters are null", inner("null"), "not an object");
    row("parameters are an array", inner("[]"), "not an object");
    row("parameters are empty", inner("{}"), "\"fromWeb\" is missing");
    row("fromWeb is a number", inner(R"({"fromWeb":0,"jobname":"a"})"), "not true or false");
    row("fromWeb is a text", inner(R"({"fromWeb":"false","jobname":"a"})"), "not true or false");
    row("no job name", inner(R"({"fromWeb":false})"), "\"jobname\" is missing");
    row("job name is a number", inner(R"({"fromWeb":false,"jobname":1})"), "not a text");
    row("job name is null", inner(R"({"fromWeb":false,"jobname":null})"), "not a text");
    row("job name twice", inner(R"({"fromWeb":false,"jobname":"a","jobname":"b"})"), "twice");
    row("a parameter too many", inner(R"({"fromWeb":false,"jobname":"a","x":1})"), "nobody knows");
    row("empty name", named(""), "empty");
    row("blank name", named("  "), "empty");
    row("name too long", named(QByteArray(501, 'a')), "longer");
    row("a line end in the name", named("a\\nb"), "plain text");
    row("a raw line end in the name", named("a\nb"), "");
    row("a NUL in the name", named("a\\u0000b"), "plain text");
    row("an escape sequence", named("\\u001b[2J"), "plain text");
    row("a direction mark", named("a\\u202eb"), "plain text");
    row("a line separator", named("a\\u2028b"), "plain text");
    row("half a character", named("a\\ud800b"), "plain text");
    row("invalid UTF-8", named("a\xff\xfe"), "");
    row("UTF-8 that is too long", named("a\xc0\xaf"), "");
    row("fromWeb for another's job", inner(R"({"fromWeb":true,"jobname":"aweb"})"),
        "not the web's");
    row("a comma too many", outer(R"("module":"robot","msgType":1,,)"), "not JSON");
    row("a comma at the end", inner(R"({"fromWeb":false,"jobname":"a",})"), "not JSON");
    row("a leading zero", outer(R"("module":"robot","msgType":01,)"), "not JSON");
    row("single quotes", "{'module':'robot'}", "not JSON");
    row("a comment", "{/* */}", "not JSON");
    row("brackets that do not match", "{]", "not JSON");
}

void RobotRequestTest::badRequests()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const auto request = read(bytes);
    QVERIFY(!request);
    QVERIFY(!request.text().isEmpty());
    QVERIFY2(request.text().contains(reason), qPrintable(request.text()));
}

void RobotRequestTest::answers()
{
    const QByteArray yes = RobotAnswer::accepted(QStringLiteral("A1B\"线")).toJson();
    QCOMPARE(yes, QByteArray("{\"accepted\":true,\"jobname\":\"A1B\\\"线\"}\n"));
    const QByteArray no = RobotAnswer::refused(QStringLiteral("why\nnot")).toJson();
    QCOMPARE(no.count('\n'), 1);
    const QJsonObject object = QJsonDocument::fromJson(no).object();
    QCOMPARE(object[QStringLiteral("accepted")].toBool(true), false);
    QCOMPARE(object[QStringLiteral("reason")].toString(), QStringLiteral("why\nnot"));
}

void RobotRequestTest::namesInTheLog_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("logged");
    QTest::newRow("plain") << QStringLiteral("a1b 01") << QStringLiteral("\"a1b 01\"");
    QTest::newRow("Chinese") << QStringLiteral("线路") << QStringLiteral("\"线路\"");
    QTest::newRow("a line end") << QStringLiteral("a\n2026 b")
                                << QStringLiteral("\"a\\u{a}2026 b\"");
    QTest::newRow("a quote") << QStringLiteral("a\": accepted")
                             << QStringLiteral("\"a\\u{22}: accepted\"");
    QTest::newRow("an escape sequence")
        << QStringLiteral("\x1b[2J") << QStringLiteral("\"\\u{1b}[2J\"");
    QTest::newRow("a line separator") << QString(QChar(0x2028)) << QStringLiteral("\"\\u{2028}\"");
    QTest::newRow("a direction mark") << QString(QChar(0x202e)) << QStringLiteral("\"\\u{202e}\"");
    QTest::newRow("long") << QString(100, QLatin1Char('a'))
                          << QLatin1Char('"') + QString(60, QLatin1Char('a')) +
                                 QStringLiteral("...\"");
}

void RobotRequestTest::namesInTheLog()
{
    QFETCH(QString, name);
    QFETCH(QString, logged);
    QCOMPARE(RobotLog::quoted(name), logged);
}

KODMS_TEST_MAIN(RobotRequestTest, QCoreApplication)
#include "RobotRequestTest.moc"
