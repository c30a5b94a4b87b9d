// The minutes of a day, put together of quotes.
#include "terminal/live/MinuteBook.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace Terminal {
namespace {

using Trading::ClockTime;
using Trading::Money;

/// What a bar of a minute tells, so far.
Trading::Quote barAt(ClockTime time, double open, double high, double low, double close, qint64 volume)
{
    Trading::Quote quote = quoteAt(time, open, volume);
    quote.high = Money::ofYuan(high).value();
    quote.low = Money::ofYuan(low).value();
    quote.close = Money::ofYuan(close).value();
    return quote;
}

ClockTime clock(int hour, int minute, int second)
{
    return ClockTime::of(hour, minute, second).value();
}

class MinuteBookTest : public ::testing::Test
{
protected:
    Bar last() const { return m_book.bars().back(); }

    MinuteBook m_book;
};

TEST_F(MinuteBookTest, GrowsByABarWithEveryMinute)
{
    EXPECT_EQ(m_book.take(quoteAt(930, 10)), 0U);
    EXPECT_EQ(m_book.take(quoteAt(931, 11)), 1U);
    ASSERT_EQ(m_book.bars().size(), 2U);
    EXPECT_EQ(last().minute, 9 * 60 + 31);
    EXPECT_EQ(last().close, 11);
    EXPECT_EQ(m_book.lastTime(), atTime(931));
}

TEST_F(MinuteBookTest, PutsTheQuotesOfAMinuteTogether)
{
    m_book.take(barAt(clock(9, 31, 10), 10, 10.2, 9.9, 10.1, 100));
    EXPECT_EQ(m_book.take(barAt(clock(9, 31, 40), 10, 10.3, 9.9, 10.3, 250)), 0U);
    ASSERT_EQ(m_book.bars().size(), 1U);
    EXPECT_EQ(last(), (Bar{quotedDay.number(), 9 * 60 + 32, 10, 10.3, 9.9, 10.3, 250}));
}

TEST_F(MinuteBookTest, LearnsNothingOfAQuoteThatComesTwice)
{
    m_book.take(quoteAt(931, 10));
    EXPECT_EQ(m_book.take(quoteAt(931, 10)), std::nullopt);
    EXPECT_EQ(last().volume, 100);
}

TEST_F(MinuteBookTest, KeepsTheCloseWhenALateQuoteOfTheMinuteComes)
{
    m_book.take(barAt(clock(9, 31, 40), 10, 10.3, 9.9, 10.3, 250));
    m_book.take(barAt(clock(9, 31, 10), 10, 10.4, 9.9, 10.1, 100));
    EXPECT_EQ(last().close, 10.3);
    EXPECT_EQ(last().volume, 250);
    EXPECT_EQ(last().high, 10.4);
}

TEST_F(MinuteBookTest, TakesALateMinuteInItsPlace)
{
    m_book.take(quoteAt(931, 10));
    m_book.take(quoteAt(933, 12));
    EXPECT_EQ(m_book.take(quoteAt(932, 11)), 1U);
    ASSERT_EQ(m_book.bars().size(), 3U);
    EXPECT_EQ(m_book.bars()[1].close, 11);
    EXPECT_EQ(last().close, 12);
    EXPECT_EQ(m_book.lastTime(), atTime(933));
}

TEST_F(MinuteBookTest, MakesTheSameBarsOfQuotesInWhateverOrder)
{
    std::mt19937 random(3);
    std::vector<Trading::Quote> quotes;
    for (int minute = 31; minute < 36; ++minute) {
        double price = 10;
        double high = price;
        double low = price;
        for (int second = 5; second < 60; second += 11) {
            price = 9 + static_cast<double>(random() % 200) / 100;
            high = std::max(high, price);
            low = std::min(low, price);
            quotes.push_back(barAt(clock(9, minute, second), 10, high, low, price, second * 10));
        }
    }
    const auto barsOf = [](const std::vector<Trading::Quote> &told) {
        MinuteBook book;
        for (const Trading::Quote &quote : told) {
            book.take(quote);
        }
        return book.bars();
    };
    const Bars inOrder = barsOf(quotes);
    ASSERT_EQ(inOrder.size(), 5U);
    quotes.insert(quotes.end(), quotes.begin(), quotes.begin() + 10); // and some of them twice
    for (int round = 0; round < 200; ++round) {
        std::shuffle(quotes.begin(), quotes.end(), random);
        ASSERT_EQ(barsOf(quotes), inOrder) << "round " << round;
    }
}

TEST_F(MinuteBookTest, HasNoBarOfTheLunchBreakNorBeforeTheAuctionHasAPrice)
{
    m_book.take(quoteAt(920, 10));
    m_book.take(quoteAt(1200, 10));
    m_book.take(quoteAt(1510, 10));
    EXPECT_TRUE(m_book.bars().empty());
    EXPECT_EQ(m_book.lastTime(), atTime(1510)) << "somebody is there";
}

TEST_F(MinuteBookTest, IsFilledWithMinutesThatNoQuoteTold)
{
    m_book.take(quoteAt(932, 12));
    const int day = quotedDay.number();
    const Bars recorded{
        {day, 570, 10, 10, 10, 10, 0}, {day, 571, 10, 11, 10, 11, 300}, {day, 572, 11, 13, 11, 13, 50}};
    EXPECT_EQ(m_book.fill(recorded), 0U);
    ASSERT_EQ(m_book.bars().size(), 3U);
    EXPECT_EQ(last().close, 12) << "the quote tells of more shares than the file";
    EXPECT_EQ(m_book.fill(recorded), std::nullopt);
}

TEST_F(MinuteBookTest, TakesARecordedMinuteThatTellsOfMoreSharesThanTheQuotes)
{
    m_book.take(quoteAt(clock(9, 31, 20), 12, 40));
    const int day = quotedDay.number();
    m_book.fill({{day, 572, 11, 13, 11, 12.5, 400}});
    EXPECT_EQ(last().volume, 400);
    EXPECT_EQ(last().close, 12.5);
    EXPECT_EQ(last().high, 13);
}

TEST_F(MinuteBookTest, KnowsTheCloseBeforeWhenAQuoteTellsIt)
{
    m_book.take(quoteAt(931, 10));
    EXPECT_EQ(m_book.previousClose(), std::nullopt);
    Trading::Quote quote = quoteAt(932, 10);
    quote.previousClose = Money::ofCents(995);
    m_book.take(quote);
    EXPECT_EQ(m_book.previousClose(), 9.95);
}

} // namespace
} // namespace Terminal
