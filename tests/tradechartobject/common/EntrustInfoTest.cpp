#include "tradechartobject/common/EntrustInfo.h"

#include <gtest/gtest.h>

using TradeChart::EntrustInfo;

TEST(EntrustInfo, HasItsFieldsInTheOrderInWhichProgramsFillThem)
{
    const EntrustInfo order{true, QStringLiteral("2"), QStringLiteral("F1"), 4, 5, 6, 7.125, 8, 9, 10.125,
                            11};
    EXPECT_TRUE(order.isBuy);
    EXPECT_EQ(order.orderStatus, QStringLiteral("2"));
    EXPECT_EQ(order.fundId, QStringLiteral("F1"));
    EXPECT_EQ(order.orderNo, 4);
    EXPECT_EQ(order.orderDate, 5);
    EXPECT_EQ(order.orderTime, 6);
    EXPECT_EQ(order.orderPrice, 7.125);
    EXPECT_EQ(order.orderQty, 8);
    EXPECT_EQ(order.matchQty, 9);
    EXPECT_EQ(order.matchPrice, 10.125);
    EXPECT_EQ(order.cancelQty, 11);
}
