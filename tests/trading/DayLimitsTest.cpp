#include "trading/DayLimits.h"
#include "tests/support/NearestTick.h"
#include "trading/TradingUnits.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

TEST(DayLimits, AreTenPercentAroundTheCloseBefore)
{
    const DayLimits limits = dayLimits(QStringLiteral("600519"), Money::ofCents(170000));

    EXPECT_EQ(limits.lowest, Money::ofCents(153000));
    EXPECT_EQ(limits.highest, Money::ofCents(187000));
}

TEST(DayLimits, AreTwentyPercentOnTheBoardsOfYoungCompanies)
{
    for (const char *const code : {"300750", "301001", "688001"}) {
        EXPECT_EQ(dayLimits(QLatin1String(code), Money::ofCents(1000)).lowest, Money::ofCents(800)) << code;
        EXPECT_EQ(dayLimits(QLatin1String(code), Money::ofCents(1000)).highest, Money::ofCents(1200)) << code;
    }
}

TEST(DayLimits, RoundHalfACentUp)
{
    const DayLimits limits = dayLimits(QStringLiteral("000001"), Money::ofCents(1005)); // 9.045 and 11.055

    EXPECT_EQ(limits.lowest, Money::ofCents(905));
    EXPECT_EQ(limits.highest, Money::ofCents(1106));
}

TEST(DayLimits, AreAtTheStepNearestToTheShareOfEveryClose)
{
    const auto steps = [](Money price) { return price.steps() / priceStep.steps(); };
    for (qint64 close = 1; close <= 100000; ++close) {
        for (const auto &[code, percent] : {std::pair("000001", 10), std::pair("300750", 20)}) {
            const DayLimits limits = dayLimits(QLatin1String(code), Money::ofCents(close));
            ASSERT_TRUE(isNearestTick(steps(limits.lowest), close, 100 - percent)) << limits.lowest.digits();
            ASSERT_TRUE(isNearestTick(steps(limits.highest), close, 100 + percent))
                << limits.highest.digits();
        }
    }
}

TEST(DayLimits, TakeACloseBetweenTwoStepsForTheNearest)
{
    const DayLimits upwards = dayLimits(QStringLiteral("000001"), Money::ofSteps(100050)); // 10.005
    const DayLimits downwards = dayLimits(QStringLiteral("000001"), Money::ofSteps(100049));

    EXPECT_EQ(upwards.highest, Money::ofCents(1101)); // of 10.01
    EXPECT_EQ(downwards.highest, Money::ofCents(1100));
}

TEST(DayLimits, ContainBothTheirEnds)
{
    const DayLimits limits = dayLimits(QStringLiteral("000001"), Money::ofCents(1000));

    EXPECT_TRUE(limits.contain(Money::ofCents(900)));
    EXPECT_TRUE(limits.contain(Money::ofCents(1100)));
    EXPECT_FALSE(limits.contain(Money::ofCents(899)));
    EXPECT_FALSE(limits.contain(Money::ofCents(1101)));
}

} // namespace
} // namespace Trading
