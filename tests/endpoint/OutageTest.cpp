#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <chrono>

using namespace std::chrono_literals;

using LocalCommunication::EndPoint;
using ::testing::ElementsAre;

using namespace std::chrono_literals;

namespace {

class Outage : public ::testing::Test
{
protected:
    /// Runs `step` and expects that it does not stand still; the limit is wide for a busy machine.
    template <typename Step>
    static void expectNoWaiting(Step step)
    {
        QElapsedTimer clock;
        clock.start();
        step();
        EXPECT_LT(clock.elapsed(), 1000);
    }

    static bool waitForReady(const RecordingEndPoint &endPoint, int count)
    {
        return waitUntil([&] { return endPoint.readyCount >= count; });
    }

    const LogCapture log;
};

} // namespace

TEST_F(Outage, EndsWhenTheBrokerComes)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    receiver.connect(broker.address());
    sender.connect(broker.address());
    EXPECT_FALSE(sender.sendMessage("c", "t", "too early"));

    broker.start();

    ASSERT_TRUE(waitForReady(receiver, 1));
    ASSERT_TRUE(waitForReady(sender, 1));
    EXPECT_TRUE(sender.sendMessage("c", "t", "now"));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_THAT(receiver.payloads(), ElementsAre("now"));
    EXPECT_TRUE(log.has(QStringLiteral("trying again")));
    EXPECT_TRUE(log.has(QStringLiteral("joined")));
}

TEST_F(Outage, OfACrashedBrokerIsOverWithItsSuccessor)
{
    TestBroker broker;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(broker.address()));
    ASSERT_TRUE(receiver.listen("d", "t"));
    ASSERT_TRUE(sender.join(broker.address()));

    for (int round = 0; round < 3; ++round) {
        const int ready = receiver.readyCount + 1;
        const int senderReady = sender.readyCount + 1;
        broker.kill();
        ASSERT_TRUE(QFileInfo::exists(broker.socketPath())); // stale
        ASSERT_TRUE(waitUntil([&] { return !receiver.isConnected() && !sender.isConnected(); }));
        EXPECT_FALSE(sender.sendMessage("c", "t", "lost"));
        broker.start();
        ASSERT_TRUE(waitForReady(receiver, ready));
        ASSERT_TRUE(waitForReady(sender, senderReady));

        EXPECT_TRUE(sender.sendMessage("c", "t", "c"));
        EXPECT_TRUE(sender.sendMessage("d", "t", "d"));
        ASSERT_TRUE(receiver.waitForMessages(2 * round + 2));
    }
    EXPECT_THAT(receiver.payloads(), ElementsAre("c", "d", "c", "d", "c", "d"));
}

TEST_F(Outage, TakesSubscriptionsForLater)
{
    TestBroker broker;
    RecordingEndPoint receiver;
    ASSERT_TRUE(receiver.join(broker.address()));
    broker.kill();
    ASSERT_TRUE(waitUntil([&] { return !receiver.isConnected(); }));

    receiver.subscribe("c", "t");
    broker.start();

    ASSERT_TRUE(waitForReady(receiver, 2));
    RecordingEndPoint sender;
    ASSERT_TRUE(sender.join(broker.address()));
    sender.sendMessage("c", "t", "p");
    EXPECT_TRUE(receiver.waitForMessages(1));
}

TEST_F(Outage, DeliversWhatArrivedBeforeTheCrash)
{
    TestBroker broker;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    RecordingEndPoint witness;
    for (RecordingEndPoint *each : {&receiver, &witness}) {
        each->subscribe("c", "t");
        ASSERT_TRUE(each->join(broker.address()));
    }
    ASSERT_TRUE(sender.join(broker.address()));
    for (int i = 0; i < 10; ++i) {
        sender.sendMessage("c", "t", "p");
    }
    ASSERT_TRUE(witness.waitForMessages(10));
    broker.kill();

    EXPECT_TRUE(receiver.waitForMessages(10));
}

TEST_F(Outage, OfAHangingBrokerStopsNobody)
{
    TestBroker broker;
    RecordingEndPoint member;
    ASSERT_TRUE(member.join(broker.address()));
    broker.freeze();

    expectNoWaiting([&] { EXPECT_TRUE(member.sendMessage("c", "t", "p")); });
    expectNoWaiting([&] { member.subscribe("c", "t"); });
    std::vector<std::unique_ptr<RecordingEndPoint>> crowd; // more than the broker's queue of callers holds
    for (int i = 0; i < 30; ++i) {
        crowd.push_back(std::make_unique<RecordingEndPoint>());
        expectNoWaiting([&] { crowd.back()->connect(broker.address()); });
    }
    member.setRequestTimeout(300ms);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(member.request("TradeQuery", "x"), QByteArray());
    EXPECT_GE(clock.elapsed(), 300);
    EXPECT_LT(clock.elapsed(), 3000);
    expectNoWaiting([&] { member.disconnect(); });

    broker.thaw();
    for (const auto &each : crowd) {
        EXPECT_TRUE(waitForReady(*each, 1));
    }
}

TEST_F(Outage, OfAHangingBrokerBoundsWhatWaitsToBeSent)
{
    constexpr int enough = 200;
    TestBroker broker;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(broker.address()));
    ASSERT_TRUE(sender.join(broker.address()));
    broker.freeze();

    int accepted = 0;
    const QByteArray megabyte(1024 * 1024, 'x');
    while (accepted < enough && sender.sendMessage("c", "t", megabyte)) {
        ++accepted;
    }
    EXPECT_GE(accepted, 32);
    EXPECT_LT(accepted, enough);
    for (int i = 0; i < 100; ++i) {
        EXPECT_FALSE(sender.sendMessage("c", "t", megabyte));
    }
    EXPECT_EQ(log.lines().filter(QStringLiteral("was not sent")).size(), 1) << qPrintable(log.text());

    broker.thaw();
    EXPECT_TRUE(receiver.waitForMessages(accepted, 60s));
    EXPECT_TRUE(waitUntil([&] { return sender.sendMessage("c", "t", megabyte); }));
}

TEST_F(Outage, TellsWhatWasLostInIt)
{
    TestBroker broker;
    RecordingEndPoint sender;
    ASSERT_TRUE(sender.join(broker.address()));
    broker.freeze();
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(sender.sendMessage("c", "t", QByteArray(1024 * 1024, 'x')));
    }

    broker.kill();

    ASSERT_TRUE(waitUntil([&] { return !sender.isConnected(); }));
    EXPECT_TRUE(log.has(QStringLiteral("messages were lost with the connection"))) << qPrintable(log.text());
}

TEST_F(Outage, TellsWhatMayBeLostWhenTheSenderLeavesInIt)
{
    TestBroker broker;
    RecordingEndPoint sender;
    ASSERT_TRUE(sender.join(broker.address()));
    broker.freeze();
    EXPECT_TRUE(sender.sendMessage("c", "t", "p"));

    sender.disconnect();

    EXPECT_TRUE(log.has(QStringLiteral("what was sent to it last may be lost"))) << qPrintable(log.text());
}

/// Each try comes after a longer time, of which chance takes away half at the most.
TEST_F(Outage, IsNoReasonToJoinInAStormABrokerThatDropsItsClients)
{
    QTemporaryDir terminal;
    QLocalServer dropping;
    int calls = 0;
    QElapsedTimer sinceFirst;
    QObject::connect(&dropping, &QLocalServer::newConnection, &dropping, [&] {
        if (calls++ == 0) {
            sinceFirst.start();
        }
        QLocalSocket *caller = dropping.nextPendingConnection();
        QObject::connect(caller, &QLocalSocket::readyRead, caller, [caller] {
            caller->write(QByteArray::fromHex("2003000000")); // MQTT 5: accepted
            caller->disconnectFromServer();
        });
    });
    ASSERT_TRUE(dropping.listen(terminal.filePath(QStringLiteral("bus.sock"))));
    QFile ini(terminal.filePath(QStringLiteral("endpoint.ini")));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[bus]\nurl=unix://" + QFile::encodeName(dropping.fullServerName()) + '\n');
    ini.close();
    RecordingEndPoint endPoint;

    endPoint.connect(terminal.path());

    ASSERT_TRUE(waitUntil([&] { return calls >= 7; }));
    EXPECT_GE(sinceFirst.elapsed(), (50 + 100 + 200 + 400 + 800 + 1600) / 2);
    EXPECT_LE(log.lines().size(), 3) << qPrintable(log.text());
}

TEST_F(Outage, FillsNoLog)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    RecordingEndPoint sender;
    sender.connect(broker.address());
    for (int i = 0; i < 1000; ++i) {
        EXPECT_FALSE(sender.sendMessage("c", "t", "p"));
    }
    EXPECT_FALSE(
        waitUntil([] { return false; }, 500ms)); // some tries to join go by, whose number nobody tells

    EXPECT_EQ(log.lines().size(), 2) << qPrintable(log.text());
}

TEST_F(Outage, LetsEndPointsGoAtAnyTime)
{
    TestBroker broker;
    auto joined = std::make_unique<RecordingEndPoint>();
    ASSERT_TRUE(joined->join(broker.address()));
    broker.kill();
    auto waiting = std::make_unique<RecordingEndPoint>();
    waiting->connect(broker.address());
    auto justReady = new RecordingEndPoint;
    QObject::connect(justReady, &EndPoint::ready, justReady, [&] {
        delete justReady;
        justReady = nullptr;
    });
    justReady->connect(broker.address());

    waiting.reset();
    joined.reset();
    broker.start();

    EXPECT_TRUE(waitUntil([&] { return justReady == nullptr; }));
}

TEST_F(Outage, BringsAllOfACrowdBack)
{
    constexpr int count = 100;
    TestBroker broker;
    std::vector<std::unique_ptr<RecordingEndPoint>> crowd;
    for (int i = 0; i < count; ++i) {
        crowd.push_back(std::make_unique<RecordingEndPoint>());
        crowd.back()->subscribe("Global", "TradeNotify");
        crowd.back()->connect(broker.address());
    }
    for (const auto &each : crowd) {
        ASSERT_TRUE(waitForReady(*each, 1));
    }

    broker.kill();
    broker.start();

    for (const auto &each : crowd) {
        ASSERT_TRUE(waitForReady(*each, 2));
    }
    crowd.front()->sendMessage("Global", "TradeNotify", "p");
    for (int i = 1; i < count; ++i) {
        EXPECT_TRUE(crowd[static_cast<std::size_t>(i)]->waitForMessages(1)) << i;
    }
}
