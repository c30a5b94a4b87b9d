#include "terminal/trades/AccountTrade.h"

#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/trades/SomeTrades.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::SizeIs;

TEST(AccountTradeOfARow, HasDayTimeSidePriceQuantityAndOrder)
{
    const Trades trades =
        readTrades(withData(QJsonArray{tradeRow("20240102", "09315000", "S", "10.25", "300", "12")}));
    ASSERT_THAT(trades, SizeIs(1));
    const AccountTrade &trade = trades.front();
    EXPECT_EQ(trade.day, onDay(20240102));
    EXPECT_EQ(trade.time.colonText(), QStringLiteral("09:31:50"));
    EXPECT_FALSE(trade.isBuy());
    EXPECT_DOUBLE_EQ(trade.price, 10.25);
    EXPECT_EQ(trade.quantity, 300);
    EXPECT_DOUBLE_EQ(trade.amount, 3075) << "reckoned where the module does not tell it";
    EXPECT_EQ(trade.orderNumber, QStringLiteral("12"));
}

TEST(AccountTradeOfARow, OfTodayMayHaveItsOrdersDayAndTimeAlone)
{
    QJsonObject row = tradeRow("", "", "B", "10", "100");
    row.remove(QStringLiteral("bizdate"));
    row.insert(QStringLiteral("orderdate"), QStringLiteral("20240103"));
    row.insert(QStringLiteral("opertime"), QStringLiteral("10000000"));
    const Trades trades = readTrades(withData(QJsonArray{row}));
    ASSERT_THAT(trades, SizeIs(1));
    EXPECT_EQ(trades.front().day, onDay(20240103));
    EXPECT_EQ(trades.front().time.colonText(), QStringLiteral("10:00:00"));
}

TEST(AccountTradeOfARow, IsLeftOutWithoutADayOrShares)
{
    EXPECT_TRUE(readTrades(withData(QJsonArray{tradeRow("2024", "09315000", "B", "10", "100"),
                                               tradeRow("20240102", "09315000", "B", "10", "0"), 7}))
                    .empty());
}

TEST(AccountTradeOfARow, IsLeftOutWithMoreSharesThanAnybodyHolds)
{
    for (const char *const shares : {"1e300", "9223372036854775807", "nan", "inf", "-100"}) {
        EXPECT_TRUE(
            readTrades(withData(QJsonArray{tradeRow("20240102", "09315000", "B", "10", shares)})).empty())
            << shares;
    }
}

TEST(AccountTradeList, IsOldestFirst)
{
    const Trades trades = readTrades(withData(QJsonArray{tradeRow("20240103", "09310000", "B", "1", "100"),
                                                         tradeRow("20240102", "10000000", "B", "2", "100"),
                                                         tradeRow("20240102", "09310000", "B", "3", "100")}));
    ASSERT_THAT(trades, SizeIs(3));
    EXPECT_DOUBLE_EQ(trades[0].price, 3);
    EXPECT_DOUBLE_EQ(trades[2].price, 1);
}

TEST(AccountTradeSum, PartsBuysFromSells)
{
    TradeSum sum;
    sum.add(tradeOn(20240102, 931, 10));
    sum.add(tradeOn(20240102, 932, 12));
    sum.add(tradeOn(20240102, 933, 13, Direction::Sell));
    EXPECT_EQ(sum.count, 3);
    EXPECT_EQ(sum.bought.quantity, 200);
    EXPECT_DOUBLE_EQ(sum.bought.averagePrice(), 11);
    EXPECT_DOUBLE_EQ(sum.sold.amount, 1300);
}

} // namespace
} // namespace Terminal
