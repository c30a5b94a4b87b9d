#include "terminal/trade/TradeRecords.h"

#include "terminal/ui/InterfaceLanguage.h"
#include "tradechartobject/common/OrderStatusTable.h"

#include <gtest/gtest.h>

#include <QJsonArray>

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

TEST(TradeRecords, TellEveryStatusInTheLanguageOfTheWindow)
{
    InterfaceLanguage language;
    for (const TradeChart::OrderStatusRow &row : TradeChart::OrderStatusTable()) {
        const OrderRecord order = orderWith(row.code);
        language.set(QStringLiteral("zh"));
        EXPECT_EQ(statusText(order), QString::fromUtf8(row.text)) << "as the overlays have it";
        language.set(QStringLiteral("en"));
        EXPECT_TRUE(statusText(order).front().isLower()) << qPrintable(statusText(order));
    }
    EXPECT_EQ(statusText(orderWith(QStringLiteral("Z"))), QStringLiteral("Z"));
}

TEST(TradeRecords, HaveNoMoreSharesThanAnybodyHolds)
{
    const QJsonObject row{{QStringLiteral("stkcode"), QStringLiteral("600519")},
                          {QStringLiteral("qty"), QStringLiteral("-9223372036854775808")},
                          {QStringLiteral("sellable"), QStringLiteral("1000000000000")}};
    const Account account =
        readAccount({{QStringLiteral("data"), QJsonObject{{QStringLiteral("positions"), QJsonArray{row}}}}});
    ASSERT_EQ(account.positions.size(), 1U);
    EXPECT_EQ(account.positions[0].quantity, 0);
    EXPECT_EQ(account.positions[0].sellable, 1000000000000);
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
