#include "endpoint/LossLog_p.h"

#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

using LocalCommunication::LossLog;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class LossLogTest : public ::testing::Test
{
protected:
    LossLogTest() { losses.begin(QStringLiteral("unix:///bus")); }

    const LogCapture log;
    LossLog losses;
};

} // namespace

TEST_F(LossLogTest, TellsOfManyMessagesOnce)
{
    for (int i = 0; i < 100; ++i) {
        losses.notSent("c/t", QStringLiteral("there is no bus"));
    }
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral(
                                 "A message to 'c/t' was not sent: there is no bus (0 more before it)")));
}

TEST_F(LossLogTest, TellsOfManyAnswersThatWereNotWaitedForOnce)
{
    for (int i = 0; i < 100; ++i) {
        losses.notAwaited();
    }
    EXPECT_THAT(log.lines(),
                ElementsAre(QStringLiteral("unix:///bus: too much waits to be delivered: an answer was not "
                                           "waited for (0 more before it)")));
}

TEST_F(LossLogTest, TellsHowManyMessagesWentWithAConnection)
{
    losses.lostWithConnection(3);
    EXPECT_THAT(log.lines(),
                ElementsAre(QStringLiteral("unix:///bus: 3 messages were lost with the connection")));
}

TEST_F(LossLogTest, TellsNothingOfAConnectionThatLostNothing)
{
    losses.lostWithConnection(0);
    EXPECT_THAT(log.lines(), IsEmpty());
}
