#include "tests/endpoint/BusTest.h"

#include <QList>

using ::testing::ElementsAre;

TEST(Delivery, CarriesAMessageToWhoSubscribed)
{
    TestBroker broker;
    RecordingEndPoint sender;
    RecordingEndPoint receiver;
    receiver.subscribe("screen1", "TradeQuery");
    ASSERT_TRUE(receiver.join(broker.address()));
    ASSERT_TRUE(sender.join(broker.address()));

    EXPECT_TRUE(sender.sendMessage("screen1", "TradeQuery", "{}"));

    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_EQ(receiver.messages[0].topic, "TradeQuery");
    EXPECT_EQ(receiver.messages[0].payload, "{}");
    EXPECT_EQ(receiver.messages[0].replyChannel, "screen1");
}
