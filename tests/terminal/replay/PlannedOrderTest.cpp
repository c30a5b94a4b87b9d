// Orders of the command line.
#include "terminal/replay/PlannedOrder.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(PlannedOrder, IsReadFromItsFourWords)
{
    const auto read = readPlannedOrder(QStringLiteral(" 1301 sell  2500 13.05"));
    ASSERT_TRUE(read) << qPrintable(read.error());
    EXPECT_EQ(read.value().time, atTime(1301));
    EXPECT_EQ(read.value().side, Direction::Sell);
    EXPECT_EQ(read.value().quantity, 2500);
    EXPECT_DOUBLE_EQ(read.value().price, 13.05);
}

struct BadOrder
{
    const char *name;
    const char *text;
};

class PlannedOrderOfABadText : public ::testing::TestWithParam<BadOrder>
{
};

TEST_P(PlannedOrderOfABadText, IsRefusedWithTheForm)
{
    const auto read = readPlannedOrder(QLatin1String(GetParam().text));
    ASSERT_FALSE(read);
    EXPECT_TRUE(read.error().contains(QStringLiteral("HHMM buy|sell QUANTITY PRICE")));
}

INSTANTIATE_TEST_SUITE_P(
    Replay, PlannedOrderOfABadText,
    ::testing::Values(BadOrder{"empty", ""}, BadOrder{"noPrice", "1000 buy 100"},
                      BadOrder{"lunch", "1200 buy 100 13.05"}, BadOrder{"noTime", "2561 buy 100 13.05"},
                      BadOrder{"shortTime", "931 buy 100 13.05"}, BadOrder{"side", "1000 hold 100 13.05"},
                      BadOrder{"noQuantity", "1000 buy 0 13.05"}, BadOrder{"fraction", "1000 buy 100 13.055"},
                      BadOrder{"free", "1000 buy 100 0.00"}, BadOrder{"more", "1000 buy 100 13.05 now"}),
    ByName());

} // namespace
} // namespace Terminal
