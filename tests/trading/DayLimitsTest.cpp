#include "trading/DayLimits.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(DayLimits, AreTenPercentAroundTheCloseBefore)
{
    const DayLimits limits = dayLimits(QStringLiteral("600519"), 170000);

    EXPECT_EQ(limits.lowest, 153000);
    EXPECT_EQ(limits.highest, 187000);
}

TEST(DayLimits, AreTwentyPercentOnTheBoardsOfYoungCompanies)
{
    for (const char *const code : {"300750", "301001", "688001"}) {
        EXPECT_EQ(dayLimits(QLatin1String(code), 1000).lowest, 800) << code;
        EXPECT_EQ(dayLimits(QLatin1String(code), 1000).highest, 1200) << code;
    }
}

TEST(DayLimits, RoundHalfACentUp)
{
    const DayLimits limits = dayLimits(QStringLiteral("000001"), 1005); // 9.045 and 11.055

    EXPECT_EQ(limits.lowest, 905);
    EXPECT_EQ(limits.highest, 1106);
}

} // namespace Trading
