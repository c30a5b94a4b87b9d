#include "terminal/trade/TradeRecords.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

const QString partlyDealt = QStringLiteral("7");
const QString allDealt = QStringLiteral("8");

OrderRecord orderWith(const QString &status)
{
    OrderRecord order;
    order.day = Trading::TradingDate::of(2024, 1, 2);
    order.status = status;
    return order;
}

TEST(TradeRecords, LetAnOrderThatIsPartlyDealtBeCancelled)
{
    EXPECT_TRUE(isCancellable(orderWith(partlyDealt)));
}

TEST(TradeRecords, LetNoOrderBeCancelledThatIsAllDealt)
{
    EXPECT_FALSE(isCancellable(orderWith(allDealt)));
}

TEST(TradeRecords, LetNoOrderWithoutADayBeCancelled)
{
    OrderRecord order = orderWith(partlyDealt);
    order.day = std::nullopt;
    EXPECT_FALSE(isCancellable(order));
}

TEST(TradeRecords, TellHowCostsAreReckonedWhereTheModuleSaysIt)
{
    EXPECT_EQ(readAccount({}).costMethod, QString());
    EXPECT_EQ(readAccount({{QStringLiteral("costmethod"), QStringLiteral("fifo")}}).costMethod,
              QStringLiteral("fifo"));
}

TEST(TradeRecords, NameTheWaysToReckonCosts)
{
    EXPECT_EQ(costMethodText(QStringLiteral("average")), QStringLiteral("moving average"));
    EXPECT_EQ(costMethodText(QStringLiteral("fifo")), QStringLiteral("first in, first out"));
    EXPECT_EQ(costMethodText(QStringLiteral("another")), QStringLiteral("another"));
}

} // namespace
} // namespace Terminal
