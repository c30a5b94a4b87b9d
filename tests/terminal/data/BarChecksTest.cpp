#include "terminal/data/BarChecks.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace Terminal {
namespace {

int usualDistanceOf(std::initializer_list<int> dates)
{
    Bars bars;
    for (const int date : dates) {
        bars.push_back({date});
    }
    return usualDistance(bars);
}

TEST(BarChecks, MeasureTheDaysWithinAMonth)
{
    EXPECT_EQ(usualDistanceOf({20240304, 20240311}), 7);
}

TEST(BarChecks, MeasureTheDaysOverTheEndOfAMonth)
{
    EXPECT_EQ(usualDistanceOf({20240228, 20240301}), 2) << "of a leap year";
    EXPECT_EQ(usualDistanceOf({20230228, 20230301}), 1);
    EXPECT_EQ(usualDistanceOf({20231229, 20240102}), 4);
}

TEST(BarChecks, TakeTheMiddleDistanceForTheUsualOne)
{
    EXPECT_EQ(usualDistanceOf({20240304, 20240305, 20240306, 20240507}), 1);
}

} // namespace
} // namespace Terminal
