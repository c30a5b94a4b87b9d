// What is sent arrives: whole, once, in order, and only where it is meant to.

#include "tests/endpoint/TwoMembers.h"
#include "tests/support/LogCapture.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <memory>

using namespace std::chrono_literals;

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Delivery = TwoMembers;

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

TEST_F(Delivery, KeepsTheOrder)
{
    constexpr int count = 5000;
    ASSERT_TRUE(receiver.listen("a", "t"));
    ASSERT_TRUE(receiver.listen("b", "t"));
    QList<QByteArray> sent;
    for (int i = 0; i < count; ++i) {
        sent.append(QByteArray::number(i));
        ASSERT_TRUE(sender.sendMessage(i % 2 ? "a" : "b", "t", sent.last()));
    }

    ASSERT_TRUE(receiver.waitForMessages(count));
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

TEST_F(Delivery, LosesNothingForAReceiverThatDoesNotReadForFiveSeconds)
{
    constexpr int count = 50000;
    ASSERT_TRUE(receiver.listen("Global", "TradeNotify"));
    QElapsedTimer sinceStart;
    sinceStart.start();
    std::atomic_bool allSent{false};
    std::atomic_bool allReceived{false};
    const std::unique_ptr<QThread> publisher(QThread::create([&, address = broker.address()] {
        RecordingEndPoint source;
        ASSERT_TRUE(source.join(address));
        const QByteArray filling(2000, 'x');
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(waitUntil([&] {
                return source.sendMessage("Global", "TradeNotify", QByteArray::number(i) + ' ' + filling);
            }));
        }
        allSent = true;
        waitUntil([&] { return allReceived.load(); }, 120s);
    }));
    publisher->start();
    while (!allSent && publisher->isRunning()) {
        QThread::msleep(1); // this thread's event loop stands still
    }
    // the five seconds are the promise: what the sender did in less time is waited out
    QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, 5000 - sinceStart.elapsed())));
    EXPECT_THAT(receiver.messages, IsEmpty());

    EXPECT_TRUE(receiver.waitForMessages(count, 60s)) << receiver.messages.size() << " arrived";
    allReceived = true;
    publisher->wait();
    ASSERT_EQ(receiver.messages.size(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_TRUE(receiver.messages[i].payload.startsWith(QByteArray::number(i) + ' ')) << i;
    }
}
