#include "trademodule/ledger/StillnessWatch.h"

#include <gtest/gtest.h>

namespace TradeModule {

namespace {

using namespace std::chrono_literals;

class StillnessWatchTest : public ::testing::Test
{
protected:
    /// Looks twice a second for so long and tells what the last look said.
    bool lookFor(std::chrono::milliseconds time, const QString &sign)
    {
        bool isStill = false;
        for (const auto end = m_now + time; m_now < end;) {
            m_now += 500ms;
            isStill = m_watch.isStill(sign, m_now);
        }
        return isStill;
    }

    void lookAwayFor(std::chrono::milliseconds time) { m_now += time; }

private:
    StillnessWatch m_watch{10s};
    StillnessWatch::Clock::time_point m_now{1h};
};

const QString sign = QStringLiteral("1");

} // namespace

TEST_F(StillnessWatchTest, TellsOfASignThatDoesNotChange)
{
    EXPECT_FALSE(lookFor(10s, sign));
    EXPECT_TRUE(lookFor(1s, sign));
}

TEST_F(StillnessWatchTest, BeginsAnewWithEveryChange)
{
    lookFor(9s, sign);

    EXPECT_FALSE(lookFor(9s, QStringLiteral("2")));
    EXPECT_FALSE(lookFor(9s, sign));
}

TEST_F(StillnessWatchTest, DoesNotJudgeWhatItHasNotSeen)
{
    lookFor(9s, sign);
    lookAwayFor(1h);

    EXPECT_FALSE(lookFor(9s, sign));
    EXPECT_TRUE(lookFor(2s, sign));
}

TEST_F(StillnessWatchTest, TakesNoSignForNoOwner)
{
    EXPECT_FALSE(lookFor(60s, {}));
}

} // namespace TradeModule
