#include "tradechartobject/common/OrderRow.h"
#include "tests/support/ReadingWay.h"

#include "tradechartobject/common/TradeMessage.h"

#include <gtest/gtest.h>

using namespace TradeChart;

namespace {

/// Every field of a row has a value of its own: none can be taken for another.
constexpr char wholeRow[] = R"({"market":"1","bsflag2":"0B","orderstatus":"7","fundid":"F1","ordersno":"42",
    "operdate":"20240102","opertime":"9315999","orderprice":"10.5","orderqty":"500","matchqty":"200",
    "matchamt":"2010.25","cancelqty":"100"})";

class OrderRowTest : public ::testing::TestWithParam<ReadingWay>
{
protected:
    OrderRow read(const QByteArray &row)
    {
        OrderRow read{};
        const auto answer = TradeMessage::parse(readIn(GetParam(), "{\"data\":[" + row + "]}"));
        answer.value().rows().read(orderColumns,
                                   [&read](const OrderRow &order, const auto &) { read = order; });
        return read;
    }
};

TEST_P(OrderRowTest, TakesEveryFieldFromItsKey)
{
    const OrderRow row = read(wholeRow);
    EXPECT_EQ(row.market, QStringLiteral("SH"));
    EXPECT_TRUE(row.hasSide);
    EXPECT_EQ(row.time, 9315999);
    EXPECT_EQ(row.matchAmount, 2010.25);
    EXPECT_TRUE(row.order.isBuy);
    EXPECT_EQ(row.order.orderStatus, QStringLiteral("7"));
    EXPECT_EQ(row.order.fundId, QStringLiteral("F1"));
    EXPECT_EQ(row.order.orderNo, 42);
    EXPECT_EQ(row.order.orderDate, 20240102);
    EXPECT_EQ(row.order.orderTime, 93159);
    EXPECT_EQ(row.order.orderPrice, 10.5);
    EXPECT_EQ(row.order.orderQty, 500);
    EXPECT_EQ(row.order.matchQty, 200);
    EXPECT_EQ(row.order.cancelQty, 100);
}

TEST_P(OrderRowTest, TakesTheFundAccountAsItIsWritten)
{
    EXPECT_EQ(read(R"({"fundid":" 0088中 "})").order.fundId, QStringLiteral(" 0088中 "));
    EXPECT_EQ(read(R"({"fundid":88})").order.fundId, QString());
    EXPECT_EQ(read("{}").order.fundId, QString());
}

INSTANTIATE_TEST_SUITE_P(Ways, OrderRowTest, bothWays, nameOfWay);

} // namespace
