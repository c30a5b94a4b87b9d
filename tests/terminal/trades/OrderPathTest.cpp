#include "terminal/trades/OrderPath.h"

#include "tests/terminal/trades/SomeTrades.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

OrderRecord orderOf(const char *number, int hhmm, double price, Direction side = Direction::Buy)
{
    OrderRecord order;
    order.number = QLatin1String(number);
    order.day = onDay(20240102);
    order.time = Trading::ClockTime::of(hhmm / 100, hhmm % 100);
    order.price = price;
    order.side = side;
    return order;
}

class OrderPathTest : public ::testing::Test
{
protected:
    OrderPathTest()
    {
        for (int minute = 571; minute < 600; ++minute) {
            m_chart.bars.push_back(barOn(20240102, minute));
        }
    }

    OrderPaths paths(const OrderRecords &orders, const Trades &trades)
    {
        return pathsOf(orders, m_chart, trades, TradePlaces(m_chart, trades));
    }

    ChartData m_chart = chartOf(ChartPeriod::Minute, {});
};

TEST_F(OrderPathTest, LeadsFromWhereTheOrderWasPlacedToWhereItWasDealt)
{
    const OrderPaths found =
        paths({orderOf("7", 931, 10)}, {tradeOn(20240102, 935, 9.9, Direction::Buy, QStringLiteral("7")),
                                        tradeOn(20240102, 940, 9.8, Direction::Buy, QStringLiteral("7"))});
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found.front().placed.bar, 0);
    EXPECT_DOUBLE_EQ(found.front().placed.price, 10);
    EXPECT_THAT(found.front().dealt, SizeIs(2));
}

TEST_F(OrderPathTest, LeavesTradesOfOtherOrdersAlone)
{
    const OrderPaths found =
        paths({orderOf("7", 931, 10)}, {tradeOn(20240102, 935, 9.9, Direction::Buy, QStringLiteral("8")),
                                        tradeOn(20240102, 936, 9.9, Direction::Sell, QStringLiteral("7")),
                                        tradeOn(20240102, 937, 9.9, Direction::Buy)});
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found.front().dealt, IsEmpty());
}

TEST_F(OrderPathTest, LeavesTradesOfAnotherDayWithTheSameNumberAlone)
{
    const OrderPaths found =
        paths({orderOf("7", 931, 10)}, {tradeOn(20231229, 935, 9.9, Direction::Buy, QStringLiteral("7"))});
    EXPECT_THAT(found.front().dealt, IsEmpty());
}

TEST_F(OrderPathTest, IsNoneOnDays)
{
    m_chart.period = ChartPeriod::Day;
    EXPECT_THAT(paths({orderOf("7", 931, 10)}, {}), IsEmpty());
}

TEST_F(OrderPathTest, IsNoneForAnOrderOfAnotherDay)
{
    OrderRecord order = orderOf("7", 931, 10);
    order.day = onDay(20240103);
    EXPECT_THAT(paths({order}, {}), IsEmpty());
}

} // namespace
} // namespace Terminal
