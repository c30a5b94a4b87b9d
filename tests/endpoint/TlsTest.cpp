// A bus beyond this machine: TLS and passwords.

#include "endpoint/Announcement.h"

#include "tests/endpoint/TlsTest.h"
#include "tests/support/HangingNames.h"

#include <QElapsedTimer>

#include <chrono>

using namespace std::chrono_literals;

TEST_F(Tls, CarriesMessagesAndRequests)
{
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));
    const BackgroundResponder module(goodAddress(), "TradeQuery");

    EXPECT_TRUE(sender.sendMessage("c", "t", "p"));
    EXPECT_TRUE(receiver.waitForMessages(1));
    sender.setRequestTimeout(20s);
    EXPECT_EQ(sender.request("TradeQuery", "x"), "answer to x");
}

TEST_F(Tls, SendsWhatWasHandedOverBeforeTheBrokerAccepted)
{
    RecordingEndPoint receiver;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    RecordingEndPoint sender;
    sender.connect(goodAddress());

    EXPECT_TRUE(sender.sendMessage("c", "t", "first"));
    EXPECT_TRUE(sender.sendMessage("c", "t", "second"));

    ASSERT_TRUE(receiver.waitForMessages(2));
    EXPECT_THAT(receiver.payloads(), ::testing::ElementsAre("first", "second"));
}

TEST_F(Tls, BringsAnAnswerRightAfterConnecting)
{
    const BackgroundResponder module(goodAddress(), "TradeQuery");
    RecordingEndPoint asker;
    asker.setRequestTimeout(20s);
    asker.connect(goodAddress());
    asker.subscribe("c", "t");

    EXPECT_EQ(asker.request("TradeQuery", "at once"), "answer to at once");

    EXPECT_TRUE(waitUntil([&] { return asker.readyCount == 1; }));
}

TEST_F(Tls, CarriesTenMegabytes)
{
    const QByteArray payload(10 * 1024 * 1024, 'x');
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));

    EXPECT_TRUE(sender.sendMessage("c", "t", payload));

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_TRUE(receiver.messages[0].payload == payload);
}

TEST_F(Tls, CarriesAFloodInOrder)
{
    constexpr int count = 2000;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("c", "t");
    ASSERT_TRUE(receiver.join(goodAddress()));
    ASSERT_TRUE(sender.join(goodAddress()));
    QList<QByteArray> sent;
    for (int i = 0; i < count; ++i) {
        sent.append(QByteArray::number(i));
        ASSERT_TRUE(sender.sendMessage("c", "t", sent.last()));
    }

    ASSERT_TRUE(receiver.waitForMessages(count));
    EXPECT_EQ(receiver.payloads(), sent);
}

TEST_F(Tls, BringsTheFarewellOfAnAnnouncementWithoutWordOfALoss)
{
    using LocalCommunication::Announcement;
    const LogCapture log;
    RecordingEndPoint listener;
    listener.subscribe("Global", "Presence");
    ASSERT_TRUE(listener.join(goodAddress()));
    Announcement announcement;
    announcement.start(goodAddress(), {"Global", "Presence", "here", "gone"});
    ASSERT_TRUE(listener.waitForMessages(1));

    announcement.stop();

    EXPECT_TRUE(listener.waitForMessages(2));
    EXPECT_FALSE(log.has(QStringLiteral("lost"))) << qPrintable(log.text());
}

TEST_F(Tls, ResolvesTheNameOfTheBroker)
{
    RecordingEndPoint endPoint;
    EXPECT_TRUE(endPoint.join(goodAddress(QStringLiteral("localhost"))));
}

TEST_F(Tls, LetsTheEventLoopGoOnWhenTheNameServerFallsSilentAfterItsFirstAnswer)
{
    const HangingNames hanging(1); // this client hears where the broker is, the MQTT library does not
    RecordingEndPoint endPoint;
    QElapsedTimer clock;
    clock.start();
    endPoint.connect(goodAddress(QLatin1String(HangingNames::host)));

    EXPECT_TRUE(waitUntil([] { return HangingNames::questions() == 2; }));

    EXPECT_LT(clock.elapsed(), 3000) << "the window stood still";
    EXPECT_FALSE(endPoint.isConnected());
}

TEST_F(Tls, JoinsAgainAfterACrash)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    ASSERT_TRUE(endPoint.join(goodAddress()));

    broker.kill();
    ASSERT_TRUE(waitUntil([&] { return !endPoint.isConnected(); }));
    broker.start();

    EXPECT_TRUE(waitUntil([&] { return endPoint.readyCount == 2; }));
}

TEST_F(Tls, TellsWhenNobodyTakesConnections)
{
    const LogCapture log;
    broker.kill();
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress());

    const auto isTold = [&] {
        return log.has(QStringLiteral("refused")) || log.has(QStringLiteral("nobody takes connections"));
    };
    EXPECT_TRUE(waitUntil(isTold, 5s)) << qPrintable(log.text()); // sooner than a broker that hangs
}

TEST_F(Tls, TellsWhenTheNameIsUnknown)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress(QStringLiteral("no-such-host.invalid")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("no-such-host.invalid")); }));
    EXPECT_FALSE(endPoint.isConnected());
}
