#include "terminal/data/TradingHours.h"
#include "tests/support/ByName.h"

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

struct QuoteTime
{
    const char *name;
    int hhmmss;
    int minute; ///< -1: none
};

class TradingHoursOfAQuote : public ::testing::TestWithParam<QuoteTime>
{
};

TEST_P(TradingHoursOfAQuote, NameTheMinuteThatItIsOf)
{
    const int time = GetParam().hhmmss;
    EXPECT_EQ(minuteOfQuote(Trading::ClockTime::ofNumber(time * 100).value()).value_or(-1),
              GetParam().minute);
}

INSTANTIATE_TEST_SUITE_P(
    At, TradingHoursOfAQuote,
    ::testing::Values(QuoteTime{"BeforeTheAuctionHasAPrice", 92459, -1},
                      QuoteTime{"TheAuctionsPrice", 92500, 570}, QuoteTime{"TheEndOfABar", 93100, 571},
                      QuoteTime{"WithinAMinute", 93001, 571}, QuoteTime{"TheLastOfTheMorning", 113000, 690},
                      QuoteTime{"LateInTheMorning", 113003, 690}, QuoteTime{"Noon", 120000, -1},
                      QuoteTime{"TheAfternoonsBegin", 130000, 781},
                      QuoteTime{"WithinItsFirstMinute", 130030, 781}, QuoteTime{"TheClose", 150000, 900},
                      QuoteTime{"LateAfterTheClose", 150030, 900}, QuoteTime{"Evening", 153000, -1}),
    ByName());

TEST(TradingHours, TellWhichMinutesAreToCome)
{
    EXPECT_EQ(tradingMinutesAfter(11 * 60 + 29).front(), 11 * 60 + 30);
    EXPECT_EQ(tradingMinutesAfter(11 * 60 + 30).front(), 13 * 60 + 1);
    EXPECT_EQ(tradingMinutesAfter(0).size(), static_cast<size_t>(minutesOfTradingDay));
    EXPECT_TRUE(tradingMinutesAfter(lastTradingMinute).empty());
}

} // namespace
} // namespace Terminal
