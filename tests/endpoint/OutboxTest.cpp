#include "endpoint/Outbox_p.h"

#include <gmock/gmock.h>

using LocalCommunication::BusMessage;
using LocalCommunication::Outbox;

namespace {

class OutboxTest : public ::testing::Test
{
protected:
    static BusMessage messageOf(int bytes) { return {"c/t", QByteArray(bytes, 'x'), {}, {}}; }

    bool takes(const BusMessage &message) const { return outbox.problemWith(message).isEmpty(); }

    static constexpr int megabyte = 1024 * 1024;
    Outbox outbox;
};

} // namespace

TEST_F(OutboxTest, TakesAMessage)
{
    EXPECT_TRUE(takes(messageOf(10)));
}

TEST_F(OutboxTest, TakesNoMessageWithoutAPath)
{
    EXPECT_EQ(outbox.problemWith({}), QStringLiteral("its channel or topic is empty or too long"));
}

TEST_F(OutboxTest, TakesNoMessageThatNoPacketCanCarry)
{
    EXPECT_TRUE(takes(messageOf(255 * megabyte)));
    EXPECT_TRUE(outbox.problemWith(messageOf(256 * megabyte)).contains(QLatin1String("is larger than")));
}

TEST_F(OutboxTest, TakesNothingMoreWhenTheBrokerDoesNotRead)
{
    for (int i = 0; i < 64; ++i) {
        ASSERT_TRUE(takes(messageOf(megabyte))) << i;
        outbox.handOver(messageOf(megabyte));
    }

    EXPECT_EQ(outbox.problemWith(messageOf(0)), QStringLiteral("the broker does not take messages any more"));
}

TEST_F(OutboxTest, CountsWhatAMessageCostsWithoutAPayload)
{
    constexpr int mostEmptyOnes = 1'000'000;
    int taken = 0;
    for (; taken < mostEmptyOnes && takes(messageOf(0)); ++taken) {
        outbox.handOver(messageOf(0));
    }

    EXPECT_LT(taken, mostEmptyOnes);
}

TEST_F(OutboxTest, CountsPathsAndCorrelations)
{
    const BusMessage named{QByteArray(60'000, 'c'), {}, QByteArray(3'000, 'r'), QByteArray(2'536, 'n')};
    int taken = 0;
    for (; taken < 2000 && takes(named); ++taken) {
        outbox.hold(named);
    }

    EXPECT_GT(taken, 1000);
    EXPECT_LE(taken, 1024);
}

TEST_F(OutboxTest, TakesMessagesAgainWhenTheBrokerHasRead)
{
    outbox.handOver(messageOf(64 * megabyte));
    outbox.handOver(messageOf(megabyte));
    ASSERT_FALSE(takes(messageOf(1)));

    outbox.noteSent(1);

    EXPECT_TRUE(takes(messageOf(1)));
}

TEST_F(OutboxTest, CountsWhatIsHeldAsWell)
{
    outbox.hold(messageOf(65 * megabyte));
    EXPECT_FALSE(takes(messageOf(1)));

    outbox.takeHeld();

    EXPECT_TRUE(takes(messageOf(1)));
}

TEST_F(OutboxTest, GivesBackInOrderWhatItHeld)
{
    outbox.hold({"c/first", "1", {}, {}});
    outbox.hold({"c/second", "2", "their/answers", "7"});

    const std::deque<BusMessage> held = outbox.takeHeld();

    ASSERT_EQ(held.size(), 2u);
    EXPECT_EQ(held[0].path, "c/first");
    EXPECT_EQ(held[1].path, "c/second");
    EXPECT_EQ(held[1].responsePath, "their/answers");
    EXPECT_EQ(held[1].correlation, "7");
    EXPECT_EQ(outbox.size(), 0);
}

TEST_F(OutboxTest, KnowsHowManyMessagesWouldBeLost)
{
    outbox.hold(messageOf(1));
    outbox.handOver(messageOf(1));
    outbox.handOver(messageOf(1));
    outbox.noteSent(1);

    EXPECT_EQ(outbox.size(), 2);
}

TEST_F(OutboxTest, IsEmptyAfterItsConnection)
{
    outbox.hold(messageOf(65 * megabyte));
    outbox.handOver(messageOf(1));

    outbox.clear();

    EXPECT_EQ(outbox.size(), 0);
    EXPECT_TRUE(takes(messageOf(1)));
}
