// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/CamRobotRequest.h"
#include "tests/desks/RobotPeer.h"
#include "tests/fakes/FakeServices.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

using namespace KODMS::Tests;
using KODMS::Fakes::FakeServices;
using KODMS::UI::CamRobotRequest;
using Manner = RobotPeer::Manner;

Q_DECLARE_METATYPE(RobotPeer::Manner)

/// The request to the CAM robot: its bytes, and that asking ends in time whoever
/// is at the other end.
class CamRobotRequestTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theBytes_data();
    void theBytes();
    void theRequestArrivesWhole();
    void everyPeerIsLeftInTime_data();
    void everyPeerIsLeftInTime();
    void aSilentRobotIsGivenItsSecond();
    void aRefusedPortIsLeftAtOnce();
    void aBlackHoleCostsNoMoreThanASilentRobot();
    void anAddressThatIsNoneIsSilent_data();
    void anAddressThatIsNoneIsSilent();
    void thePortIsTheLowSixteenBits_data();
    void thePortIsTheLowSixteenBits();
    void theConfigurationIsReadForEachRequest();
    void aRobotThatSpeaksFirstStillGetsTheRequest();
};

namespace {

/// A machine under load may hold a process up for seconds; the point is that
/// asking ends at all, and not by minutes of a connection that nobody takes.
constexpr int InTimeMs = 10000;

const char PlainRequest[] = "{\n"
                            "    \"module\": \"robot\",\n"
                            "    \"msgParams\": {\n"
                            "        \"fromWeb\": false,\n"
                            "        \"jobname\": \"abc-01\"\n"
                            "    },\n"
                            "    \"msgType\": 1\n"
                            "}\n";

void aimAt(const char *host, int port)
{
    FakeServices::instance().config.robotHost = host;
    FakeServices::instance().config.robotPort = port;
}

/// Asks for the plain job; how long that took.
qint64 ask()
{
    QElapsedTimer clock;
    clock.start();
    CamRobotRequest(QStringLiteral("ABC-01"), false).send();
    return clock.elapsed();
}

} // namespace

void CamRobotRequestTest::init()
{
    FakeServices::instance().reset();
}

void CamRobotRequestTest::theBytes_data()
{
    QTest::addColumn<QString>("jobName");
    QTest::addColumn<bool>("fromWeb");
    QTest::addColumn<QByteArray>("bytes");
    const auto bytes = [](const char *fromWeb, const char *name) -> QByteArray {
        return QByteArray("{\n    \"module\": \"robot\",\n    \"msgParams\": {\n") +
               "        \"fromWeb\": " + fromWeb + ",\n        \"jobname\": \"" + name + "\"\n" +
               "    },\n    \"msgType\": 1\n}\n";
    };
    QTest::newRow("a plain job") << "ABC-01" << false << QByteArray(PlainRequest);
    QTest::newRow("a web job") << "WEB_A1" << true << bytes("true", "web_a1");
    QTest::newRow("a web job's name without being one")
        << "WEB_A1" << false << bytes("false", "web_a1");
    QTest::newRow("a Chinese name") << "板A1" << false << bytes("false", "板a1");
    QTest::newRow("capital letters of other scripts") << "ÄÖΩ" << false << bytes("false", "äöω");
    QTest::newRow("a quote, a backslash, a line feed") << "A\"B\\C\n"
                                                       << false << bytes("false", "a\\\"b\\\\c\\n");
    QTest::newRow("no name") << "" << true << bytes("true", "");
}

void CamRobotRequestTest::theBytes()
{
    QFETCH(QString, jobName);
    QFETCH(bool, fromWeb);
    QTEST(CamRobotRequest(jobName, fromWeb).bytes(), "bytes");
}

/// Nothing before the object, nothing after its line feed, one connection.
void CamRobotRequestTest::theRequestArrivesWhole()
{
    RobotPeer peer(Manner::AnswersAtOnce);
    aimAt("127.0.0.1", peer.port());
    const qint64 elapsed = ask();
    QCOMPARE(peer.received(), QByteArray(PlainRequest));
    QCOMPARE(peer.connections(), 1);
    QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
}

void CamRobotRequestTest::everyPeerIsLeftInTime_data()
{
    QTest::addColumn<Manner>("manner");
    QTest::newRow("never answers") << Manner::NeverAnswers;
    QTest::newRow("answers at once") << Manner::AnswersAtOnce;
    QTest::newRow("closes at once") << Manner::ClosesAtOnce;
    QTest::newRow("speaks first") << Manner::GreetsFirst;
    QTest::newRow("sends 10 MiB") << Manner::FloodsFirst;
}

void CamRobotRequestTest::everyPeerIsLeftInTime()
{
    QFETCH(Manner, manner);
    RobotPeer peer(manner);
    aimAt("127.0.0.1", peer.port());
    for (int request = 1; request <= 2; ++request) {
        const qint64 elapsed = ask();
        QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
        peer.received(request);
        QCOMPARE(peer.connections(), request);
    }
}

void CamRobotRequestTest::aSilentRobotIsGivenItsSecond()
{
    RobotPeer peer(Manner::NeverAnswers);
    aimAt("127.0.0.1", peer.port());
    const qint64 elapsed = ask();
    QVERIFY2(elapsed >= 990, QByteArray::number(elapsed));
    QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
    QCOMPARE(peer.received(), QByteArray(PlainRequest));
}

void CamRobotRequestTest::aRefusedPortIsLeftAtOnce()
{
    aimAt("127.0.0.1", refusedPort());
    const qint64 elapsed = ask();
    QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
    aimAt("127.0.0.1", 0);
    ask();
}

/// The lower bound shows that the hole is one: the attempt was still going on
/// when the second was over.
void CamRobotRequestTest::aBlackHoleCostsNoMoreThanASilentRobot()
{
    const BlackHole hole;
    aimAt("127.0.0.1", hole.port());
    const qint64 elapsed = ask();
    QVERIFY2(elapsed >= 990, QByteArray::number(elapsed));
    QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
}

void CamRobotRequestTest::anAddressThatIsNoneIsSilent_data()
{
    QTest::addColumn<QByteArray>("host");
    for (const char *host : {"", " ", "robot", "localhost", "256.0.0.1", "127.0.0.1:7071",
                             "1.2.3.4.5", "::1::", "机器人"})
        QTest::addRow("\"%s\"", host) << QByteArray(host);
}

/// Names are not looked up. A warning on the way would fail this test too.
void CamRobotRequestTest::anAddressThatIsNoneIsSilent()
{
    QFETCH(QByteArray, host);
    RobotPeer peer(Manner::AnswersAtOnce);
    aimAt(host.constData(), peer.port());
    const qint64 elapsed = ask();
    QVERIFY2(elapsed < InTimeMs, QByteArray::number(elapsed));
    QCOMPARE(peer.connections(), 0);
    QCOMPARE(FakeServices::instance().count("Common::getConfig"), 1);
}

void CamRobotRequestTest::thePortIsTheLowSixteenBits_data()
{
    QTest::addColumn<int>("added");
    QTest::newRow("as it is") << 0;
    QTest::newRow("the seventeenth bit set") << 0x10000;
    QTest::newRow("all higher bits but the sign set") << 0x7fff0000;
    QTest::newRow("negative") << -0x10000;
}

void CamRobotRequestTest::thePortIsTheLowSixteenBits()
{
    QFETCH(int, added);
    RobotPeer peer(Manner::AnswersAtOnce);
    aimAt("127.0.0.1", peer.port() + added);
    ask();
    QCOMPARE(peer.received(), QByteArray(PlainRequest));
}

void CamRobotRequestTest::theConfigurationIsReadForEachRequest()
{
    RobotPeer first(Manner::AnswersAtOnce);
    RobotPeer second(Manner::AnswersAtOnce);
    const CamRobotRequest request(QStringLiteral("ABC-01"), false);
    aimAt("127.0.0.1", first.port());
    request.send();
    aimAt("127.0.0.1", second.port());
    request.send();
    QCOMPARE(first.received(), QByteArray(PlainRequest));
    QCOMPARE(second.received(), QByteArray(PlainRequest));
    QCOMPARE(first.connections(), 1);
    QCOMPARE(FakeServices::instance().count("Common::getConfig"), 2);
}

/// Whether the greeting is there before the request has left is a matter of luck,
/// about one time in a hundred here; hence many requests.
void CamRobotRequestTest::aRobotThatSpeaksFirstStillGetsTheRequest()
{
    constexpr int requests = 200;
    RobotPeer peer(Manner::GreetsFirst);
    aimAt("127.0.0.1", peer.port());
    for (int request = 0; request < requests; ++request)
        ask();
    QCOMPARE(peer.received(requests), QByteArray(PlainRequest).repeated(requests));
}

KODMS_TEST_MAIN(CamRobotRequestTest, QApplication)
#include "CamRobotRequestTest.moc"
