#include "tradechartobject/common/OrderStatusTable.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace TradeChart;

namespace {

/// The codes of the rows that a rule holds for, in the order of the table.
template <typename Rule>
std::string codesWhere(Rule rule)
{
    std::string codes;
    for (const OrderStatusRow &row : OrderStatusTable()) {
        codes += rule(row) ? row.code.data() : "";
    }
    return codes;
}

std::string codesOfGroup(std::optional<OrderStatusGroup> group)
{
    return codesWhere([group](const OrderStatusRow &row) { return row.group == group; });
}

} // namespace

TEST(OrderStatusTable, HasARowForEveryStatus)
{
    EXPECT_EQ(codesWhere([](const OrderStatusRow &) { return true; }), "0123456789ABG");
}

TEST(OrderStatusTable, LetsOrdersBeCancelledInFourStatuses)
{
    EXPECT_EQ(codesWhere([](const OrderStatusRow &row) { return isCancellable(row.code); }), "127A");
}

TEST(OrderStatusTable, LetsNoOrderBeCancelledInAnUnknownStatus)
{
    EXPECT_FALSE(isCancellable(QStringLiteral("a"))); // letter case matters
    EXPECT_FALSE(isCancellable(QString()));
    EXPECT_FALSE(isCancellable(QStringLiteral("11")));
}

TEST(OrderStatusTable, KnowsWhichOrdersMayStillChange)
{
    EXPECT_EQ(codesWhere([](const OrderStatusRow &row) { return row.isOpen; }), "012347AB");
}

TEST(OrderStatusTable, CancelsNothingThatIsOver)
{
    EXPECT_EQ(codesWhere([](const OrderStatusRow &row) { return row.isCancellable && !row.isOpen; }), "");
}

TEST(OrderStatusTable, SortsStatusesIntoTheGroupsOfTheMarkers)
{
    EXPECT_EQ(codesOfGroup(OrderStatusGroup::PartDealt), "457");
    EXPECT_EQ(codesOfGroup(OrderStatusGroup::Waiting), "012A");
    EXPECT_EQ(codesOfGroup(OrderStatusGroup::Dealt), "8");
    EXPECT_EQ(codesOfGroup(std::nullopt), "369BG");
}

TEST(OrderStatusTable, FindsARowByItsCode)
{
    const OrderStatusRow *const row = OrderStatusTable::find(QStringLiteral("A"));
    ASSERT_NE(row, nullptr);
    EXPECT_STREQ(row->text, "待报");
    EXPECT_EQ(OrderStatusTable::find(QStringLiteral("a")), nullptr);
    EXPECT_EQ(OrderStatusTable::find(QStringLiteral("C")), nullptr);
}

TEST(OrderStatusTable, FindsARowInEitherLetterCaseWhenAsked)
{
    const OrderStatusRow *const row = OrderStatusTable::findInAnyCase(QStringLiteral("g"));
    ASSERT_NE(row, nullptr);
    EXPECT_STREQ(row->text, "已确认");
    EXPECT_EQ(OrderStatusTable::findInAnyCase(QStringLiteral("c")), nullptr);
}
