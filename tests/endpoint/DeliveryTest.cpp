#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <memory>

using LocalCommunication::EndPoint;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A broker, and two members of its bus.
class Delivery : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(sender.join(broker.address()));
        ASSERT_TRUE(receiver.join(broker.address()));
    }

    TestBroker broker;
    RecordingEndPoint sender;
    RecordingEndPoint receiver;
};

} // namespace

TEST_F(Delivery, CarriesAMessageToWhoSubscribed)
{
    ASSERT_TRUE(receiver.listen("screen1", "TradeQuery"));

    EXPECT_TRUE(sender.sendMessage("screen1", "TradeQuery", "{}"));

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_EQ(receiver.messages[0].topic, "TradeQuery");
    EXPECT_EQ(receiver.messages[0].payload, "{}");
    EXPECT_EQ(receiver.messages[0].replyChannel, "screen1");
}

TEST_F(Delivery, TakesSubscriptionsMadeBeforeConnecting)
{
    RecordingEndPoint late;
    late.subscribe("screen1", QList<QByteArray>{"TradeNotify", "TradeQuery"});
    ASSERT_TRUE(late.join(broker.address()));

    sender.sendMessage("screen1", "TradeQuery", "first");
    sender.sendMessage("screen1", "TradeNotify", "second");

    ASSERT_TRUE(late.waitForMessages(2));
    EXPECT_THAT(late.payloads(), ElementsAre("first", "second"));
}

TEST_F(Delivery, HandlesAQuestionAfterTheSubscriptionsMadeBeforeIt)
{
    ASSERT_TRUE(receiver.listen("Global", "TradeQuery"));
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver,
                     [this] { receiver.sendMessage("screen1", "TradeQuery", "answer"); });
    RecordingEndPoint overlay;
    overlay.connect(broker.address());
    overlay.subscribe("screen1", QList<QByteArray>{"TradeNotify", "TradeQuery"});

    EXPECT_TRUE(overlay.sendMessage("Global", "TradeQuery", "question")); // nothing was waited for

    EXPECT_TRUE(overlay.waitForMessages(1));
}

TEST_F(Delivery, ReturnsNoMessageToItsSender)
{
    ASSERT_TRUE(sender.listen("Global", "TradeNotify"));
    ASSERT_TRUE(receiver.listen("Global", "TradeNotify"));

    sender.sendMessage("Global", "TradeNotify", "own");
    receiver.sendMessage("Global", "TradeNotify", "other's");

    ASSERT_TRUE(sender.waitForMessages(1));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_THAT(sender.payloads(), ElementsAre("other's"));
    EXPECT_THAT(receiver.payloads(), ElementsAre("own"));
}

TEST_F(Delivery, DeliversOnceWhatWasSubscribedTwice)
{
    ASSERT_TRUE(receiver.listen("screen1", "TradeQuery"));
    receiver.subscribe("screen1", "TradeQuery");
    ASSERT_TRUE(receiver.listen("screen1", "End"));

    sender.sendMessage("screen1", "TradeQuery", "once");
    sender.sendMessage("screen1", "End", "end");

    ASSERT_TRUE(receiver.waitForMessages(2));
    EXPECT_THAT(receiver.payloads(), ElementsAre("once", "end"));
}

TEST_F(Delivery, KeepsTheOrder)
{
    constexpr int Count = 5000;
    ASSERT_TRUE(receiver.listen("a", "t"));
    ASSERT_TRUE(receiver.listen("b", "t"));
    QList<QByteArray> sent;
    for (int i = 0; i < Count; ++i) {
        sent.append(QByteArray::number(i));
        ASSERT_TRUE(sender.sendMessage(i % 2 ? "a" : "b", "t", sent.last()));
    }

    ASSERT_TRUE(receiver.waitForMessages(Count));
    EXPECT_EQ(receiver.payloads(), sent);
}

TEST_F(Delivery, KeepsEveryNameToItself)
{
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte.append(static_cast<char>(byte));
    }
    const QList<QByteArray> names{"a",
                                  "a/b",
                                  "a/b/",
                                  "+",
                                  "#",
                                  "a+",
                                  "$SYS",
                                  "$share",
                                  "$share/g/a",
                                  "%",
                                  "%2F",
                                  "%25",
                                  "a b",
                                  " ",
                                  "持仓",
                                  "..",
                                  QByteArray("a\0b", 3),
                                  everyByte,
                                  "\xFF\xFE",
                                  QByteArray(5000, '/')};
    for (const QByteArray &name : names) {
        receiver.subscribe(name, name);
    }
    ASSERT_TRUE(receiver.listen("End", "End"));

    for (const QByteArray &name : names) {
        EXPECT_TRUE(sender.sendMessage(name, name, name)) << name.toPercentEncoding().constData();
    }
    sender.sendMessage("End", "End", "End");

    ASSERT_TRUE(
        waitUntil([&] { return !receiver.messages.isEmpty() && receiver.messages.last().topic == "End"; }));
    ASSERT_EQ(receiver.messages.size(), names.size() + 1);
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(receiver.messages[i].topic, names[i]);
        EXPECT_EQ(receiver.messages[i].payload, names[i]);
        EXPECT_EQ(receiver.messages[i].replyChannel, names[i]);
    }
}

TEST_F(Delivery, RefusesEmptyNames)
{
    const LogCapture log;

    EXPECT_FALSE(sender.sendMessage("", "t", "p"));
    EXPECT_FALSE(sender.sendMessage("c", "", "p"));
    EXPECT_EQ(sender.request("", "p"), QByteArray());
    receiver.subscribe("", "t");

    EXPECT_TRUE(log.has(QStringLiteral("empty or too long"))) << qPrintable(log.text());
    EXPECT_TRUE(sender.isConnected());
}

TEST_F(Delivery, CarriesAnEmptyPayload)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    EXPECT_TRUE(sender.sendMessage("c", "t", ""));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_EQ(receiver.messages[0].payload, "");
}

TEST_F(Delivery, CarriesTenMegabytes)
{
    QByteArray payload(10 * 1024 * 1024, Qt::Uninitialized);
    for (int i = 0; i < payload.size(); ++i) {
        payload[i] = static_cast<char>(i * 31 + (i >> 10));
    }
    ASSERT_TRUE(receiver.listen("c", "t"));

    EXPECT_TRUE(sender.sendMessage("c", "t", payload));

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_TRUE(receiver.messages[0].payload == payload);
}

TEST_F(Delivery, LosesNothingForAReceiverThatDoesNotReadForFiveSeconds)
{
    constexpr int Count = 50000;
    ASSERT_TRUE(receiver.listen("Global", "TradeNotify"));
    QElapsedTimer sinceStart;
    sinceStart.start();
    std::atomic_bool allSent{false};
    std::atomic_bool allReceived{false};
    const std::unique_ptr<QThread> publisher(QThread::create([&, address = broker.address()] {
        RecordingEndPoint source;
        ASSERT_TRUE(source.join(address));
        const QByteArray filling(2000, 'x');
        for (int i = 0; i < Count; ++i) {
            ASSERT_TRUE(waitUntil([&] {
                return source.sendMessage("Global", "TradeNotify", QByteArray::number(i) + ' ' + filling);
            }));
        }
        allSent = true;
        waitUntil([&] { return allReceived.load(); }, 120000);
    }));
    publisher->start();
    while (!allSent && publisher->isRunning()) {
        QThread::msleep(1); // this thread's event loop stands still
    }
    QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, 5000 - sinceStart.elapsed())));
    EXPECT_THAT(receiver.messages, IsEmpty());

    EXPECT_TRUE(receiver.waitForMessages(Count, 60000)) << receiver.messages.size() << " arrived";
    allReceived = true;
    publisher->wait();
    ASSERT_EQ(receiver.messages.size(), Count);
    for (int i = 0; i < Count; ++i) {
        ASSERT_TRUE(receiver.messages[i].payload.startsWith(QByteArray::number(i) + ' ')) << i;
    }
}

TEST_F(Delivery, StopsAtOnceWhenAReceiverDestroysItself)
{
    auto *overlay = new RecordingEndPoint;
    ASSERT_TRUE(overlay->join(broker.address()));
    ASSERT_TRUE(overlay->listen("c", "t"));
    int delivered = 0;
    QObject::connect(overlay, &EndPoint::messageReceived, overlay, [&] {
        ++delivered;
        delete overlay;
    });
    const QPointer<RecordingEndPoint> alive(overlay);

    for (int i = 0; i < 100; ++i) {
        sender.sendMessage("c", "t", "delete yourself");
    }

    ASSERT_TRUE(waitUntil([&] { return alive.isNull(); }));
    EXPECT_EQ(delivered, 1);
    ASSERT_TRUE(receiver.listen("c", "t")); // the event loop goes on
}

TEST_F(Delivery, StopsAtOnceWhenAReceiverLeavesTheBus)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [this] { receiver.disconnect(); });
    RecordingEndPoint witness;
    ASSERT_TRUE(witness.join(broker.address()));
    ASSERT_TRUE(witness.listen("c", "t"));

    for (int i = 0; i < 100; ++i) {
        sender.sendMessage("c", "t", "leave");
    }

    ASSERT_TRUE(witness.waitForMessages(100));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_EQ(receiver.messages.size(), 1);
    EXPECT_FALSE(receiver.isConnected());
}

TEST_F(Delivery, KeepsTheOrderWhenAReceiverRunsAnEventLoop)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    int depth = 0;
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [&] {
        if (depth++ == 0) { // an overlay that waits after a notification
            EXPECT_TRUE(receiver.waitForMessages(50));
        }
    });

    QList<QByteArray> sent;
    for (int i = 0; i < 100; ++i) {
        sent.append(QByteArray::number(i));
        sender.sendMessage("c", "t", sent.last());
    }

    ASSERT_TRUE(receiver.waitForMessages(100));
    EXPECT_EQ(receiver.payloads(), sent);
}

/// The messages lie in the receiver's socket, all of them, before its event loop runs: it reads them at once.
TEST_F(Delivery, GoesOnInsideTheEventLoopThatAReceiverRuns)
{
    constexpr int Count = 5;
    ASSERT_TRUE(receiver.listen("c", "t"));
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [&] {
        if (receiver.messages.size() == 1) { // an overlay that waits after a notification
            EXPECT_TRUE(receiver.waitForMessages(Count));
        }
    });

    const BackgroundResponder responder(broker.address(), "question", Count);
    ASSERT_EQ(sender.request("question", "?"), "answer to ?");

    ASSERT_TRUE(receiver.waitForMessages(Count));
}

TEST_F(Delivery, SendsWhatWasHandedOverBeforeTheSenderGoes)
{
    constexpr int Count = 200;
    ASSERT_TRUE(receiver.listen("c", "t"));
    {
        RecordingEndPoint brief;
        brief.connect(broker.address());
        for (int i = 0; i < Count; ++i) {
            ASSERT_TRUE(brief.sendMessage("c", "t", QByteArray(10000, 'x')));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(Count));
}

TEST_F(Delivery, SendsAFloodBeforeTheSenderGoes)
{
    constexpr int Count = 20000;
    ASSERT_TRUE(receiver.listen("c", "t"));
    {
        RecordingEndPoint brief;
        ASSERT_TRUE(brief.join(broker.address()));
        for (int i = 0; i < Count; ++i) {
            ASSERT_TRUE(brief.sendMessage("c", "t", QByteArray(2000, 'x')));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(Count)) << receiver.messages.size();
}

TEST_F(Delivery, SurvivesLeavingTwiceAndNeverHavingJoined)
{
    RecordingEndPoint never;
    never.disconnect();
    never.disconnect();
    EXPECT_FALSE(never.sendMessage("c", "t", "p"));
    EXPECT_EQ(never.request("t", "p"), QByteArray());

    sender.disconnect();
    sender.disconnect();
    EXPECT_FALSE(sender.isConnected());
    EXPECT_FALSE(sender.sendMessage("c", "t", "p"));
}

TEST_F(Delivery, KeepsSubscriptionsOverLeavingAndJoiningAgain)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    receiver.disconnect();
    ASSERT_TRUE(receiver.join(broker.address()));

    sender.sendMessage("c", "t", "again");

    EXPECT_TRUE(receiver.waitForMessages(1));
}

TEST_F(Delivery, MovesToAnotherBus)
{
    TestBroker other;
    ASSERT_TRUE(receiver.listen("c", "t"));
    RecordingEndPoint otherSender;
    ASSERT_TRUE(otherSender.join(other.address()));

    ASSERT_TRUE(receiver.join(other.address()));
    sender.sendMessage("c", "t", "from the old bus");
    otherSender.sendMessage("c", "t", "from the new bus");

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_THAT(receiver.payloads(), ElementsAre("from the new bus"));
}

TEST_F(Delivery, KeepsPrefixesApart)
{
    broker.setBusKey(QStringLiteral("prefix"), QStringLiteral("desk7/account 42"));
    RecordingEndPoint inside;
    RecordingEndPoint insideToo;
    ASSERT_TRUE(inside.join(broker.address()));
    ASSERT_TRUE(insideToo.join(broker.address()));
    ASSERT_TRUE(inside.listen("c", "t"));
    ASSERT_TRUE(receiver.listen("c", "t"));

    sender.sendMessage("c", "t", "outside");
    insideToo.sendMessage("c", "t", "inside");

    ASSERT_TRUE(inside.waitForMessages(1));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_THAT(inside.payloads(), ElementsAre("inside"));
    EXPECT_THAT(receiver.payloads(), ElementsAre("outside"));
}
