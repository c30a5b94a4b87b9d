#include "trademodule/results/CheckedSum.h"

#include <gtest/gtest.h>

#include <limits>

namespace TradeModule {

TEST(CheckedSumProportion, RoundsAHalfAwayFromZero)
{
    EXPECT_EQ(proportion(5, 1, 2), 3);
    EXPECT_EQ(proportion(-5, 1, 2), -3);
    EXPECT_EQ(proportion(7, 1, 3), 2);
    EXPECT_EQ(proportion(10, 1, 4), 3);
}

TEST(CheckedSumProportion, IsExactBeyondSixtyFourBits)
{
    constexpr qint64 large = 3000000000000000001;
    EXPECT_EQ(proportion(large, 999999999999, 999999999999), large);
    EXPECT_EQ(proportionRoundedDown(large, 999999999998, 999999999999), large - 3000001);
}

TEST(CheckedSumProportion, StopsAtTheEndOfItsRange)
{
    EXPECT_EQ(proportion(std::numeric_limits<qint64>::max(), 10, 1), std::numeric_limits<qint64>::max());
}

} // namespace TradeModule
