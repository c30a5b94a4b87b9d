#include "terminal/trades/TradeClusters.h"

#include "tests/terminal/trades/SomeTrades.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

/// Ten days from the 1st on, 100 pixels each; a yuan is 100 pixels, from 5 to 15.
class TradeClustersTest : public ::testing::Test
{
protected:
    TradeClustersTest()
    {
        for (int day = 1; day <= 10; ++day) {
            m_bars.push_back(barOn(20240200 + day));
        }
        m_geometry = {{-0.5, 9.5}, 0, 1000, 5, 15, 0, 1000};
    }

    TradeMarkList marksOf(const Trades &trades)
    {
        const TradePlaces places(chartOf(ChartPeriod::Day, m_bars), trades);
        return marksInView(places, trades, m_geometry, m_bars.size());
    }

    Bars m_bars;
    ChartGeometry m_geometry;
};

TEST_F(TradeClustersTest, MarkATradeAtItsBarAndPrice)
{
    const TradeMarkList marks = marksOf({tradeOn(20240203, 1000, 12)});
    ASSERT_THAT(marks, SizeIs(1));
    EXPECT_EQ(marks.front().place, QPointF(250, 300));
    EXPECT_EQ(marks.front().box().center(), QPointF(250, 300));
    EXPECT_EQ(marks.front().kind, TradeKind::Buy);
}

TEST_F(TradeClustersTest, MergeTradesThatLieCloserThanAMark)
{
    const TradeMarkList marks =
        marksOf({tradeOn(20240203, 1000, 12), tradeOn(20240203, 1001, 12.05), tradeOn(20240203, 1002, 12.2)});
    ASSERT_THAT(marks, SizeIs(2));
    EXPECT_THAT(marks[0].trades, ElementsAre(0U, 1U));
    EXPECT_THAT(marks[1].trades, ElementsAre(2U));
}

TEST_F(TradeClustersTest, MergeAlsoOverTheEdgeOfASquare)
{
    const TradeMarkList marks = marksOf({tradeOn(20240203, 1000, 12.001), tradeOn(20240203, 1001, 11.999)});
    EXPECT_THAT(marks, SizeIs(1));
}

TEST_F(TradeClustersTest, TellBuysAndSellsTogether)
{
    const TradeMarkList marks =
        marksOf({tradeOn(20240203, 1000, 12), tradeOn(20240203, 1001, 12, Direction::Sell)});
    ASSERT_THAT(marks, SizeIs(1));
    EXPECT_EQ(marks.front().kind, TradeKind::Both);
    EXPECT_EQ(marks.front().count(), 2);
}

TEST_F(TradeClustersTest, HaveNoTwoMarksOverEachOther)
{
    Trades trades;
    for (int minute = 0; minute < 240; ++minute) {
        trades.push_back(tradeOn(20240203 + minute % 3, 1000, 8 + minute * 0.03));
    }
    std::sort(trades.begin(), trades.end(),
              [](const AccountTrade &one, const AccountTrade &other) { return one.day < other.day; });
    const TradeMarkList marks = marksOf(trades);
    int count = 0;
    for (size_t one = 0; one < marks.size(); ++one) {
        count += marks[one].count();
        for (size_t other = one + 1; other < marks.size(); ++other) {
            const QPointF away = marks[one].place - marks[other].place;
            EXPECT_TRUE(std::abs(away.x()) >= TradeGlyphs::side || std::abs(away.y()) >= TradeGlyphs::side);
        }
    }
    EXPECT_EQ(count, 240);
}

/// A count of two digits is wider than a mark.
TEST_F(TradeClustersTest, HaveNoCountOverAnotherMark)
{
    m_geometry.span = {-0.5, 59.5}; // bars nearer to each other than a count is wide
    Trades trades;
    for (int day = 0; day < 10; ++day) {
        for (int trade = 0; trade < 12; ++trade) {
            trades.push_back(tradeOn(20240201 + day, 1000, 12));
        }
    }
    const TradeMarkList marks = marksOf(trades);
    size_t count = 0;
    for (size_t one = 0; one < marks.size(); ++one) {
        count += marks[one].trades.size();
        for (size_t other = one + 1; other < marks.size(); ++other) {
            EXPECT_FALSE(marks[one].box().intersects(marks[other].box()));
        }
    }
    EXPECT_EQ(count, trades.size());
}

TEST_F(TradeClustersTest, StandAtTheEdgeOfAScaleThatDoesNotReachThem)
{
    const TradeMarkList marks = marksOf({tradeOn(20240203, 1000, 99)});
    ASSERT_THAT(marks, SizeIs(1));
    EXPECT_EQ(marks.front().place.y(), 0);
}

TEST_F(TradeClustersTest, AreOfTheBarsInViewAlone)
{
    m_geometry.span = {4.5, 9.5};
    EXPECT_TRUE(marksOf({tradeOn(20240203, 1000, 12)}).empty());
}

TEST_F(TradeClustersTest, AreNoneWithoutAScale)
{
    m_geometry = {};
    EXPECT_TRUE(marksOf({tradeOn(20240203, 1000, 12)}).empty());
}

} // namespace
} // namespace Terminal
