// Leaving a bus, for good or for another one.

#include "tests/endpoint/TwoMembers.h"

#include <QFileInfo>
#include <QProcess>

#include <memory>
#include <vector>

using namespace std::chrono_literals;

using ::testing::ElementsAre;

namespace {

using Leaving = TwoMembers;

} // namespace

TEST_F(Leaving, SendsWhatWasHandedOverBeforeTheSenderGoes)
{
    constexpr int count = 200;
    ASSERT_TRUE(receiver.listen("c", "t"));
    {
        RecordingEndPoint brief;
        brief.connect(broker.address());
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(brief.sendMessage("c", "t", QByteArray(10000, 'x')));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(count));
}

TEST_F(Leaving, SendsAFloodBeforeTheSenderGoes)
{
    constexpr int count = 20000;
    ASSERT_TRUE(receiver.listen("c", "t"));
    {
        RecordingEndPoint brief;
        ASSERT_TRUE(brief.join(broker.address()));
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(brief.sendMessage("c", "t", QByteArray(2000, 'x')));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(count)) << receiver.messages.size();
}

TEST_F(Leaving, LosesNothingThoughTheSenderHasNotReadItsOwnMessages)
{
    constexpr int rounds = 40;
    constexpr int count = 20;
    ASSERT_TRUE(receiver.listen("d", "t"));
    const BackgroundResponder other(broker.address(), "question", 1, 1); // publishes to c as well
    for (int round = 0; round < rounds; ++round) {
        RecordingEndPoint brief;
        ASSERT_TRUE(brief.join(broker.address()));
        ASSERT_TRUE(brief.listen("c", "t"));
        ASSERT_EQ(sender.request("question", "?"), "answer to ?"); // no event loop: it does not read
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(brief.sendMessage("d", "t", "p"));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(rounds * count, 5s)) << receiver.messages.size();
}

/// Descriptors of sockets that a program started now has; -1 where the system does not tell.
int inheritedSockets()
{
    if (!QFileInfo::exists(QStringLiteral("/proc/self/fd"))) {
        return -1;
    }
    QProcess program;
    program.start(QStringLiteral("ls"), {QStringLiteral("-l"), QStringLiteral("/proc/self/fd")});
    program.waitForFinished();
    return program.readAll().count("socket:");
}

TEST_F(Leaving, LeavesNothingOfItToProgramsThatAreStartedMeanwhile)
{
    sender.disconnect();
    receiver.disconnect();
    const int before = inheritedSockets();
    std::vector<std::unique_ptr<RecordingEndPoint>> members;
    for (int i = 0; i < 10; ++i) {
        members.push_back(std::make_unique<RecordingEndPoint>());
        ASSERT_TRUE(members.back()->join(broker.address()));
    }
    EXPECT_EQ(inheritedSockets(), before);
}

TEST_F(Leaving, SurvivesLeavingTwiceAndNeverHavingJoined)
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

TEST_F(Leaving, MovesToAnotherBus)
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
