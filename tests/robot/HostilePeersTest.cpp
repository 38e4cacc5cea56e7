// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotServer.h"
#include "tests/robot/support/Peer.h"
#include "tests/robot/support/Requests.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>
#include <random>
#include <vector>

using namespace KODMS::Robot;
using KODMS::Tests::deskRequest;
using KODMS::Tests::Peer;
using KODMS::Tests::withoutDescriptors;

/// The server alone, with peers of every kind.
class HostilePeersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aGoodRequestIsAnswered();
    void bytesMayComeOneByOne();
    void halfAConnectionIsEnoughForAnAnswer();
    void refusedAtOnce_data();
    void refusedAtOnce();
    void aRequestThatBreaksOffIsRefused();
    void whoSendsNothingIsLetGo();
    void whoIsSlowIsLetGoAndDisturbsNobody();
    void tenMegabytesOfRubbish_data();
    void tenMegabytesOfRubbish();
    void onlyTheFirstRequestCounts();
    void manyAtOnce();
    void tooManyAreTurnedAway();
    void whoBreaksTheConnectionDisturbsNobody();
    void silentNeverAnswers();
    void slowAnswersLateAndComplete();
    void runsOutOfDescriptorsAndRecovers();
    void mutatedRequests();

private:
    void serve(const ConnectionRules &rules);
    QByteArray ask(const QByteArray &bytes);
    void expectStillServing();

    quint16 port() const { return m_server->serverPort(); }

    QByteArray good() const { return deskRequest(QStringLiteral("a1b000001")); }

    const QByteArray m_accepted = "{\"accepted\":true,\"jobname\":\"A1B000001\"}\n";
    std::unique_ptr<RobotServer> m_server;
    QStringList m_jobs; ///< that reached the handler
};

void HostilePeersTest::init()
{
    serve({});
}

void HostilePeersTest::serve(const ConnectionRules &rules)
{
    m_jobs.clear();
    m_server = std::make_unique<RobotServer>(rules, [this](const RobotRequest &request) {
        m_jobs << request.jobName;
        return RobotAnswer::accepted(request.jobName.toUpper());
    });
    const auto listens = m_server->listenAt(QHostAddress(QHostAddress::LocalHost), 0);
    QVERIFY2(listens, qPrintable(listens.text));
}

void HostilePeersTest::cleanup()
{
    m_server.reset();
}

QByteArray HostilePeersTest::ask(const QByteArray &bytes)
{
    Peer peer(port());
    peer.send(bytes);
    return peer.answer();
}

void HostilePeersTest::expectStillServing()
{
    m_jobs.clear();
    QCOMPARE(ask(good()), m_accepted);
    QCOMPARE(m_jobs.size(), 1);
}

void HostilePeersTest::aGoodRequestIsAnswered()
{
    bool isOver = false;
    Peer peer(port());
    QVERIFY(peer.send(good()));
    QCOMPARE(peer.answer(&isOver), m_accepted);
    QVERIFY(isOver);
    QCOMPARE(m_jobs, QStringList(QStringLiteral("a1b000001")));
}

void HostilePeersTest::bytesMayComeOneByOne()
{
    Peer peer(port());
    const QByteArray bytes = good();
    for (const char byte : bytes) {
        QVERIFY(peer.send(QByteArray(1, byte)));
        QTest::qWait(1);
    }
    QCOMPARE(peer.answer(), m_accepted);
}

void HostilePeersTest::halfAConnectionIsEnoughForAnAnswer()
{
    Peer peer(port());
    QVERIFY(peer.send(good().trimmed()));
    peer.halfClose();
    QCOMPARE(peer.answer(), m_accepted);
    expectStillServing();
}

void HostilePeersTest::refusedAtOnce_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("a web request")
        << QByteArray("GET / HTTP/1.1\r\n\r\n") << QByteArray("not a JSON object");
    QTest::newRow("deep nesting") << QByteArray(5000, '{') << QByteArray("nested too deeply");
    QTest::newRow("deep nesting of arrays")
        << QByteArray("{\"a\":") + QByteArray(5000, '[') << QByteArray("nested too deeply");
    QTest::newRow("two requests") << good() + good() << QByteArray("something follows");
    QTest::newRow("invalid UTF-8") << QByteArray("{\"module\":\"\xff\xfe\"}") << QByteArray("JSON");
    QTest::newRow("a key twice") << QByteArray(
                                        R"({"module":"robot","msgType":1,"msgType":1,"msgParams":)"
                                        R"({"fromWeb":false,"jobname":"a"}})")
                                 << QByteArray("twice");
    QTest::newRow("NULs") << QByteArray(100, 0) << QByteArray("not a JSON object");
}

void HostilePeersTest::refusedAtOnce()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, reason);
    bool isOver = false;
    Peer peer(port()); // stays open: it is not its end that brings the answer
    QVERIFY(peer.send(bytes));
    const QByteArray answer = peer.answer(&isOver, 4000);
    QVERIFY(isOver);
    QVERIFY2(answer.startsWith("{\"accepted\":false,") && answer.contains(reason),
             answer.constData());
    QVERIFY(m_jobs.isEmpty());
    expectStillServing();
}

void HostilePeersTest::aRequestThatBreaksOffIsRefused()
{
    const QByteArray bytes = good();
    for (const int size : {1, 20, bytes.size() - 2}) {
        Peer peer(port());
        QVERIFY(peer.send(bytes.left(size)));
        peer.halfClose();
        const QByteArray answer = peer.answer();
        QVERIFY2(answer.contains("breaks off"), answer.constData());
    }
    QVERIFY(m_jobs.isEmpty());
    expectStillServing();
}

void HostilePeersTest::whoSendsNothingIsLetGo()
{
    ConnectionRules rules;
    rules.requestLimit = 200;
    serve(rules);
    Peer half(port());
    half.halfClose();
    QVERIFY(half.answer().contains("nothing was sent"));
    Peer mute(port());
    bool isOver = false;
    QVERIFY(mute.answer(&isOver).contains("no complete request within 200 ms"));
    QVERIFY(isOver);
    QVERIFY(m_jobs.isEmpty());
    expectStillServing();
}

void HostilePeersTest::whoIsSlowIsLetGoAndDisturbsNobody()
{
    ConnectionRules rules;
    rules.requestLimit = 800;
    serve(rules);
    Peer slow(port());
    QVERIFY(slow.send("{ "));
    bool isOver = false;
    int served = 0;
    while (!isOver) { // a byte now and then does not buy more time
        slow.send(" ");
        QCOMPARE(ask(good()), m_accepted);
        ++served;
        slow.answer(&isOver, 50);
    }
    QVERIFY(slow.received().contains("no complete request"));
    QCOMPARE(m_jobs.size(), served);
    QVERIFY(served > 1);
}

void HostilePeersTest::tenMegabytesOfRubbish_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("letters") << QByteArray(1024, 'x');
    QTest::newRow("zeros") << QByteArray(1024, 0);
    QTest::newRow("blanks") << QByteArray(1024, ' ');
    QTest::newRow("requests") << good();
    QTest::newRow("one long name") << QByteArray("{\"module\":\"") + QByteArray(10240, 'r');
}

void HostilePeersTest::tenMegabytesOfRubbish()
{
    QFETCH(QByteArray, piece);
    ConnectionRules rules;
    rules.lingerLimit = 300;
    serve(rules);
    constexpr int tenMegabytes = 10 * 1024 * 1024;
    bool isOver = false;
    Peer peer(port());
    peer.send(piece.repeated(tenMegabytes / piece.size())); // cut off on the way, or not
    peer.answer(&isOver);
    QVERIFY(isOver);
    QVERIFY2(peer.received().isEmpty() || peer.received().contains("\"accepted\":false"),
             peer.received().constData());
    QVERIFY(m_jobs.isEmpty());
    expectStillServing();
}

void HostilePeersTest::onlyTheFirstRequestCounts()
{
    Peer peer(port());
    QVERIFY(peer.send(good()));
    QTRY_COMPARE(peer.received(), m_accepted);
    peer.send(good());
    QCOMPARE(peer.answer(), m_accepted);
    QTest::qWait(20);
    QCOMPARE(m_jobs.size(), 1);
}

void HostilePeersTest::manyAtOnce()
{
    std::vector<std::unique_ptr<Peer>> peers;
    for (int i = 0; i < 40; ++i)
        peers.push_back(std::make_unique<Peer>(port()));
    for (const auto &peer : peers)
        QVERIFY(peer->send(good()));
    for (const auto &peer : peers)
        QCOMPARE(peer->answer(), m_accepted);
    QCOMPARE(m_jobs.size(), 40);
}

void HostilePeersTest::tooManyAreTurnedAway()
{
    ConnectionRules rules;
    rules.mostConnections = 3;
    serve(rules);
    std::vector<std::unique_ptr<Peer>> idle;
    for (int i = 0; i < 3; ++i)
        idle.push_back(std::make_unique<Peer>(port()));
    QTest::qWait(20);
    Peer fourth(port());
    bool isOver = false;
    QCOMPARE(fourth.answer(&isOver), QByteArray());
    QVERIFY(isOver);
    idle.clear();
    QTest::qWait(20);
    expectStillServing();
}

void HostilePeersTest::whoBreaksTheConnectionDisturbsNobody()
{
    const QByteArray bytes = good();
    for (const int size : {0, 1, 50, bytes.size()}) {
        for (int i = 0; i < 5; ++i) {
            Peer broken(port());
            broken.send(bytes.left(size));
            QTest::qWait(i); // before, while and after it is read
            broken.reset();
            Peer closed(port());
            closed.send(bytes.left(size));
            QTest::qWait(i);
            closed.close();
        }
    }
    QTest::qWait(20);
    expectStillServing();
}

void HostilePeersTest::silentNeverAnswers()
{
    ConnectionRules rules;
    rules.manner = ConnectionRules::Manner::Silent;
    rules.silenceLimit = 500;
    serve(rules);
    Peer leaves(port());
    QVERIFY(leaves.send(good()));
    QTRY_COMPARE(m_jobs.size(), 1);
    QCOMPARE(leaves.received(), QByteArray());
    leaves.close();
    Peer stays(port());
    QVERIFY(stays.send(good()));
    bool isOver = false;
    QCOMPARE(stays.answer(&isOver), QByteArray());
    QVERIFY(isOver);
    QCOMPARE(m_jobs.size(), 2);
    Peer rubbish(port());
    rubbish.send("rubbish");
    QCOMPARE(rubbish.answer(&isOver), QByteArray());
    QVERIFY(isOver);
}

void HostilePeersTest::slowAnswersLateAndComplete()
{
    ConnectionRules rules;
    rules.manner = ConnectionRules::Manner::Slow;
    rules.slowDelay = 200;
    rules.slowByte = 2;
    serve(rules);
    QElapsedTimer watch;
    watch.start();
    Peer half(port());
    Peer whole(port());
    Peer leaves(port());
    for (Peer *peer : {&half, &whole, &leaves})
        QVERIFY(peer->send(good()));
    half.halfClose();
    QTRY_VERIFY(!leaves.received().isEmpty());
    QVERIFY(watch.elapsed() >= rules.slowDelay);
    leaves.reset();
    QCOMPARE(half.answer(), m_accepted);
    QCOMPARE(whole.answer(), m_accepted);
    QVERIFY(watch.elapsed() >= rules.slowDelay + rules.slowByte * (m_accepted.size() - 1));
    QCOMPARE(m_jobs.size(), 3);
}

void HostilePeersTest::runsOutOfDescriptorsAndRecovers()
{
    Peer peer(port()); // connected by the system, not yet accepted
    QVERIFY(peer.send(good()));
    bool wasDeaf = false;
    const bool ran = withoutDescriptors([&] {
        QTest::qWait(50);
        wasDeaf = m_jobs.isEmpty();
    });
    if (!ran)
        QSKIP("a process does not run out of descriptors here");
    QVERIFY(wasDeaf);
    QCOMPARE(peer.answer(), m_accepted);
    expectStillServing();
}

/// Whatever a byte more, less or other makes of a request: an answer, and an end.
void HostilePeersTest::mutatedRequests()
{
    std::mt19937 random(4);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 400; ++round) {
        QByteArray bytes = good();
        for (int change = below(4); change >= 0; --change) {
            const int place = below(bytes.size());
            switch (below(3)) {
            case 0:
                bytes[place] = static_cast<char>(below(256));
                break;
            case 1:
                bytes.insert(place, static_cast<char>(below(256)));
                break;
            default:
                bytes.remove(place, 1 + below(3));
            }
        }
        Peer peer(port());
        QVERIFY(peer.send(bytes));
        peer.halfClose();
        bool isOver = false;
        const QByteArray answer = peer.answer(&isOver);
        QVERIFY2(isOver && answer.startsWith("{\"accepted\":") && answer.endsWith("}\n"),
                 bytes.constData());
    }
    expectStillServing();
}

KODMS_TEST_MAIN(HostilePeersTest, QCoreApplication)
#include "HostilePeersTest.moc"
