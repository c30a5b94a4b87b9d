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

} // namespace
} // namespace Terminal
