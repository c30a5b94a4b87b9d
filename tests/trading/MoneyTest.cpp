#include "trading/Money.h"

#include <gtest/gtest.h>

#include <limits>

namespace Trading {

namespace {

Money yuan(double amount)
{
    return Money::ofYuan(amount).value();
}

} // namespace

TEST(Money, IsNothingAtFirst)
{
    EXPECT_TRUE(Money().isZero());
    EXPECT_FALSE(Money().isNegative());
}

TEST(Money, IsAWholeNumberOfSteps)
{
    EXPECT_EQ(yuan(10.5).steps(), 105000);
    EXPECT_EQ(yuan(0.00005).steps(), 1); // to the nearest
    EXPECT_EQ(yuan(-7.3625).steps(), -73625);
    EXPECT_EQ(Money::ofSteps(12345).yuan(), 1.2345);
}

TEST(Money, IsNotMadeOfWhatIsNoAmount)
{
    EXPECT_EQ(Money::ofYuan(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(Money::ofYuan(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(Money::ofYuan(1.1e11), std::nullopt);
    EXPECT_TRUE(Money::ofYuan(1e11));
}

TEST(Money, IsWrittenWithTwoDecimalsOrAsManyAsItHas)
{
    EXPECT_EQ(yuan(10.5).digits(), "10.50");
    EXPECT_EQ(yuan(7.363).digits(), "7.363");
    EXPECT_EQ(yuan(0.0001).digits(), "0.0001");
    EXPECT_EQ(yuan(-0.05).digits(), "-0.05");
    EXPECT_EQ(Money().digits(), "0.00");
    EXPECT_EQ(yuan(1234567).text(), QStringLiteral("1234567.00"));
}

TEST(Money, IsAddedAndTakenAwayExactly)
{
    EXPECT_EQ(yuan(0.1) + yuan(0.2), yuan(0.3));
    EXPECT_EQ(yuan(0.3) - yuan(0.1), yuan(0.2));
    EXPECT_EQ(-yuan(1), yuan(-1));
    EXPECT_EQ(magnitude(yuan(-1)), yuan(1));
}

TEST(Money, IsMultipliedWithinItsLimit)
{
    EXPECT_EQ(yuan(9.99).times(300), yuan(2997));
    EXPECT_EQ(yuan(-9.99).times(2), yuan(-19.98));
    EXPECT_EQ(yuan(1).times(100000000000), Money::limit());
    EXPECT_EQ(yuan(1).times(100000000001), std::nullopt);
    EXPECT_EQ(yuan(-1).times(100000000001), std::nullopt);
    EXPECT_EQ(yuan(1000000).times(1000000000000), std::nullopt);    // would be negative in 64 bits
    EXPECT_EQ(yuan(1000000).times(1844674407370955), std::nullopt); // would come to little
}

TEST(Money, KnowsWhetherASumIsWithinTheLimit)
{
    EXPECT_TRUE(Money::limit().isWithinLimit());
    EXPECT_FALSE((Money::limit() + Money::ofSteps(1)).isWithinLimit());
    EXPECT_TRUE((-Money::limit()).isWithinLimit());
    EXPECT_FALSE((-Money::limit() - Money::ofSteps(1)).isWithinLimit());
}

TEST(Money, IsMadeOfCents)
{
    EXPECT_EQ(Money::ofCents(1005), yuan(10.05));
}

TEST(Money, IsCompared)
{
    EXPECT_TRUE(yuan(1) < yuan(2) && yuan(2) > yuan(1) && yuan(1) != yuan(2) && yuan(1) == yuan(1));
}

TEST(Money, IsExactlyWhatWasTypedOrNothing)
{
    EXPECT_EQ(Money::ofExactYuan(13.35), Money::ofCents(1335));
    EXPECT_EQ(Money::ofExactYuan(999999.9999), Money::ofSteps(9999999999));
    EXPECT_EQ(Money::ofExactYuan(9.99996), std::nullopt);
    EXPECT_EQ(Money::ofExactYuan(1e12), std::nullopt);
}

} // namespace Trading
