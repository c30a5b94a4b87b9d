#include "trademodule/ledger/Holding.h"

#include <gtest/gtest.h>

namespace TradeModule {

namespace {

Execution entry(Side side, double price, qint64 quantity, double fee = 0)
{
    Execution execution{{}, side, TradingDate::first(), ClockTime(), Money::ofYuan(price).value(), quantity};
    execution.amount = execution.price.times(quantity).value();
    execution.fee = Money::ofYuan(fee).value();
    return execution;
}

Holding after(std::initializer_list<Execution> entries)
{
    Holding holding;
    for (const Execution &execution : entries) {
        holding.add(execution);
    }
    return holding;
}

} // namespace

TEST(HoldingCost, IsUnknownWithoutAHolding)
{
    EXPECT_EQ(Holding().costPrice(), std::nullopt);
}

TEST(HoldingCost, IncludesTheFeesOfBuys)
{
    EXPECT_DOUBLE_EQ(*after({entry(Side::Buy, 10, 100, 5)}).costPrice(), 10.05);
}

TEST(HoldingCost, IsTheAverageOfTheBuys)
{
    EXPECT_DOUBLE_EQ(*after({entry(Side::Buy, 10, 100), entry(Side::Buy, 13, 200)}).costPrice(), 12);
}

TEST(HoldingCost, IsNotChangedByASell)
{
    const Holding holding = after({entry(Side::Buy, 10, 300, 5), entry(Side::Sell, 20, 100, 5)});

    EXPECT_EQ(holding.quantity(), 200);
    EXPECT_DOUBLE_EQ(*holding.costPrice(), 3005.0 / 300);
}

TEST(HoldingCost, IsForgottenWhenAllIsSold)
{
    EXPECT_EQ(after({entry(Side::Buy, 10, 100), entry(Side::Sell, 9, 100)}).costPrice(), std::nullopt);
}

TEST(HoldingCost, StartsAnewAfterAllWasSold)
{
    const Holding holding =
        after({entry(Side::Buy, 10, 100), entry(Side::Sell, 9, 100), entry(Side::Buy, 20, 100)});

    EXPECT_DOUBLE_EQ(*holding.costPrice(), 20);
}

TEST(HoldingCost, IsSpreadOverBonusShares)
{
    EXPECT_DOUBLE_EQ(*after({entry(Side::Buy, 10, 100), entry(Side::Bonus, 0, 100)}).costPrice(), 5);
}

TEST(HoldingCost, CountsWhatWasSoldWithoutHavingComeIn)
{
    const Holding holding = after({entry(Side::Buy, 10, 100), entry(Side::Sell, 9, 300)});

    EXPECT_EQ(holding.quantity(), 0);
    EXPECT_EQ(holding.unexplained(), 200);
}

} // namespace TradeModule
