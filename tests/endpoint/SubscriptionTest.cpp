// When a subscription counts, and for how long.

#include "tests/endpoint/TwoMembers.h"

using LocalCommunication::EndPoint;
using ::testing::ElementsAre;

namespace {

using Subscription = TwoMembers;

} // namespace

TEST_F(Subscription, TakesSubscriptionsMadeBeforeConnecting)
{
    RecordingEndPoint late;
    late.subscribe("screen1", QList<QByteArray>{"TradeNotify", "TradeQuery"});
    ASSERT_TRUE(late.join(broker.address()));

    sender.sendMessage("screen1", "TradeQuery", "first");
    sender.sendMessage("screen1", "TradeNotify", "second");

    ASSERT_TRUE(late.waitForMessages(2));
    EXPECT_THAT(late.payloads(), ElementsAre("first", "second"));
}

TEST_F(Subscription, HandlesAQuestionAfterTheSubscriptionsMadeBeforeIt)
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

TEST_F(Subscription, DeliversOnceWhatWasSubscribedTwice)
{
    ASSERT_TRUE(receiver.listen("screen1", "TradeQuery"));
    receiver.subscribe("screen1", "TradeQuery");
    ASSERT_TRUE(receiver.listen("screen1", "End"));

    sender.sendMessage("screen1", "TradeQuery", "once");
    sender.sendMessage("screen1", "End", "end");

    ASSERT_TRUE(receiver.waitForMessages(2));
    EXPECT_THAT(receiver.payloads(), ElementsAre("once", "end"));
}

TEST_F(Subscription, KeepsSubscriptionsOverLeavingAndJoiningAgain)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    receiver.disconnect();
    ASSERT_TRUE(receiver.join(broker.address()));

    sender.sendMessage("c", "t", "again");

    EXPECT_TRUE(receiver.waitForMessages(1));
}

TEST_F(Subscription, OfManyTopicsFitsABrokerThatTakesSmallPacketsOnly)
{
    TestBroker strict(TestBroker::Begin::NotStarted);
    strict.setConfiguration(
        {QStringLiteral("allow_anonymous true"), QStringLiteral("max_packet_size 30000")});
    strict.start();
    QList<QByteArray> topics;
    for (int i = 0; i < 500; ++i) {
        topics.append(QByteArray(200, 'x') + QByteArray::number(i));
    }
    RecordingEndPoint many;
    many.subscribe("c", topics);
    ASSERT_TRUE(many.join(strict.address()));
    RecordingEndPoint other;
    ASSERT_TRUE(other.join(strict.address()));

    other.sendMessage("c", topics.first(), "first");
    other.sendMessage("c", topics.last(), "last");

    ASSERT_TRUE(many.waitForMessages(2));
}
