// What of a quote no quote before it told.
#include "trademodule/exchange/NewTrading.h"

#include <gmock/gmock.h>

namespace TradeModule {
namespace {

Money yuan(double value)
{
    return Money::ofYuan(value).value();
}

/// A bar as far as it is told at a time of the day.
Quote told(int hour, int minute, int second, double high, double low, double close, qint64 volume)
{
    Quote quote{{QStringLiteral("000001"), Market::Shenzhen},
                TradingDate::of(2024, 1, 2).value(),
                ClockTime::of(hour, minute, second).value()};
    quote.open = yuan(10);
    quote.high = yuan(high);
    quote.low = yuan(low);
    quote.close = yuan(close);
    quote.volume = volume;
    return quote;
}

class NewTradingTest : public ::testing::Test
{
protected:
    NewTradingTest() { m_new.note(told(10, 0, 20, 10.2, 9.9, 10.1, 1000)); }

    NewTrading m_new;
};

TEST_F(NewTradingTest, IsAllOfAMinuteThatWasNotToldBefore)
{
    const Quote next = told(10, 1, 30, 10.2, 9.9, 10, 700);
    ASSERT_TRUE(m_new.of(next));
    EXPECT_EQ(m_new.of(next)->volume, 700);
    EXPECT_EQ(m_new.of(next)->open, yuan(10));
}

TEST_F(NewTradingTest, IsWhatTheMinuteGrewBy)
{
    const auto added = m_new.of(told(10, 0, 40, 10.3, 9.9, 10.2, 1500));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->volume, 500);
    EXPECT_EQ(added->open, yuan(10.1));
    EXPECT_EQ(added->high, yuan(10.3));
    EXPECT_EQ(added->low, yuan(10.1)) << "9.90 was before";
}

TEST_F(NewTradingTest, IsNothingOfAQuoteThatComesTwiceOrLate)
{
    EXPECT_FALSE(m_new.of(told(10, 0, 20, 10.2, 9.9, 10.1, 1000)));
    EXPECT_FALSE(m_new.of(told(10, 0, 10, 10.2, 9.9, 10.1, 400)));
    EXPECT_FALSE(m_new.of(told(9, 59, 0, 10.2, 9.9, 10.1, 4000)));
}

TEST_F(NewTradingTest, IsAllOfADayThatIsPlayedAgain)
{
    Quote quote = told(10, 5, 0, 10.2, 9.9, 10.1, 1000);
    quote.recorded = TradingDate::of(2018, 1, 8);
    m_new.note(quote);
    quote.time = ClockTime::of(9, 31).value();
    EXPECT_TRUE(m_new.of(quote));
    EXPECT_EQ(m_new.timeWith(quote), quote.time);
}

TEST_F(NewTradingTest, DoesNotLetTheClockOfTheMarketGoBack)
{
    Quote other = told(10, 0, 10, 10.2, 9.9, 10.1, 400);
    other.security.code = QStringLiteral("000002");
    EXPECT_EQ(m_new.timeWith(other), ClockTime::of(10, 0, 20).value());
    m_new.note(other);
    other.time = ClockTime::of(10, 0, 15).value();
    EXPECT_EQ(m_new.timeWith(other), ClockTime::of(10, 0, 20).value());
}

} // namespace
} // namespace TradeModule
