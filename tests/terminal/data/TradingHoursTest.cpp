#include "terminal/data/TradingHours.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(TradingHours, MakesABarForTheOpeningAuction)
{
    const Bars minutes = withAuctionBar({{20240102, 571, 10, 12, 9, 11, 500}});
    ASSERT_EQ(minutes.size(), 2U);
    const Bar &auction = minutes.front();
    EXPECT_EQ(auction.minute, 570);
    EXPECT_EQ(auction.date, 20240102);
    EXPECT_DOUBLE_EQ(auction.open, 10);
    EXPECT_DOUBLE_EQ(auction.high, 10);
    EXPECT_DOUBLE_EQ(auction.low, 10);
    EXPECT_DOUBLE_EQ(auction.close, 10);
    EXPECT_DOUBLE_EQ(auction.volume, 0);
}

TEST(TradingHours, KeepsARecordedAuction)
{
    const Bars minutes = withAuctionBar({{20240102, 570, 10, 10, 10, 10, 27300}});
    ASSERT_EQ(minutes.size(), 1U);
    EXPECT_DOUBLE_EQ(minutes.front().volume, 27300);
}

TEST(TradingHours, HasTwoHundredAndFortyOneMinutes)
{
    int minutes = 0;
    for (int minute = 0; minute < 24 * 60; ++minute) {
        minutes += isTradingMinute(minute) ? 1 : 0;
    }
    EXPECT_EQ(minutes, minutesOfTradingDay);
}

} // namespace
} // namespace Terminal
