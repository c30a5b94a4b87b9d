#include "endpoint/OutageLog_p.h"

#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

using LocalCommunication::OutageLog;

namespace {

class OutageLogTest : public ::testing::Test
{
protected:
    OutageLogTest() { outage.begin(QStringLiteral("unix:///bus")); }

    const LogCapture log;
    OutageLog outage;
};

const QString lost = QStringLiteral("the connection was lost");
const QString toldLost =
    QStringLiteral("unix:///bus: the connection was lost; trying again until the bus is there");
const QString toldJoined = QStringLiteral("unix:///bus: joined");

} // namespace

TEST_F(OutageLogTest, TellsEachReasonOnce)
{
    outage.failed(lost);
    outage.failed(lost);
    outage.failed(QStringLiteral("no such file"));
    outage.failed(lost);

    EXPECT_EQ(log.lines().size(), 2);
    EXPECT_EQ(log.lines().constFirst(), toldLost);
}

TEST_F(OutageLogTest, TellsTheEndOfAnOutage)
{
    outage.failed(lost);
    outage.joined();

    EXPECT_EQ(log.lines(), QStringList({toldLost, toldJoined}));
}

TEST_F(OutageLogTest, SaysNothingOfABusThatIsJoinedAtOnce)
{
    outage.joined();
    outage.settled();

    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(OutageLogTest, TellsOnceOfABusThatComesAndGoes)
{
    for (int i = 0; i < 10; ++i) {
        outage.joined();
        outage.failed(lost);
    }

    EXPECT_EQ(log.lines(), QStringList({toldLost, toldJoined}));
}

TEST_F(OutageLogTest, EndsWithTheTruthAboutABusThatCameAndWent)
{
    outage.failed(lost);
    outage.joined();
    outage.failed(lost);
    outage.joined();
    outage.settled();

    EXPECT_EQ(log.lines(), QStringList({toldLost, toldJoined, toldJoined}));
}

TEST_F(OutageLogTest, TellsOfTheNextOutageAgain)
{
    outage.failed(lost);
    outage.joined();
    outage.settled();
    outage.failed(lost);

    EXPECT_EQ(log.lines(), QStringList({toldLost, toldJoined, toldLost}));
}
