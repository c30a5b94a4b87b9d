#include "trading/SecurityRules.h"
#include "tests/support/NearestTick.h"
#include "trading/CodeRanges.h"
#include "trading/MarketRules.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

constexpr TradingDate aMonday = TradingDate::ofNumber(20261123).value();

/// The rules of a code of which nothing else is known.
SecurityRules rulesOf(const QString &code)
{
    return MarketRules::of({code, CodeRanges::of(code)->market}, aMonday);
}

DayLimits dayLimits(const QString &code, Money closeBefore)
{
    return rulesOf(code).limits(closeBefore).value();
}

TEST(SecurityRulesLimits, AreTenPercentAroundTheCloseBefore)
{
    const DayLimits limits = dayLimits(QStringLiteral("600519"), Money::ofCents(170000));

    EXPECT_EQ(limits.lowest, Money::ofCents(153000));
    EXPECT_EQ(limits.highest, Money::ofCents(187000));
}

TEST(SecurityRulesLimits, AreTwentyPercentOnTheBoardsOfYoungCompanies)
{
    for (const char *const code : {"300750", "301001", "688001"}) {
        EXPECT_EQ(dayLimits(QLatin1String(code), Money::ofCents(1000)).lowest, Money::ofCents(800)) << code;
        EXPECT_EQ(dayLimits(QLatin1String(code), Money::ofCents(1000)).highest, Money::ofCents(1200)) << code;
    }
}

TEST(SecurityRulesLimits, RoundHalfACentUp)
{
    const DayLimits limits = dayLimits(QStringLiteral("000001"), Money::ofCents(1005)); // 9.045 and 11.055

    EXPECT_EQ(limits.lowest, Money::ofCents(905));
    EXPECT_EQ(limits.highest, Money::ofCents(1106));
}

TEST(SecurityRulesLimits, AreAtTheStepNearestToTheShareOfEveryClose)
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

TEST(SecurityRulesLimits, TakeACloseBetweenTwoStepsForTheNearest)
{
    const DayLimits upwards = dayLimits(QStringLiteral("000001"), Money::ofSteps(100050)); // 10.005
    const DayLimits downwards = dayLimits(QStringLiteral("000001"), Money::ofSteps(100049));

    EXPECT_EQ(upwards.highest, Money::ofCents(1101)); // of 10.01
    EXPECT_EQ(downwards.highest, Money::ofCents(1100));
}

TEST(SecurityRulesLimits, ContainBothTheirEnds)
{
    const DayLimits limits = dayLimits(QStringLiteral("000001"), Money::ofCents(1000));

    EXPECT_TRUE(limits.contain(Money::ofCents(900)));
    EXPECT_TRUE(limits.contain(Money::ofCents(1100)));
    EXPECT_FALSE(limits.contain(Money::ofCents(899)));
    EXPECT_FALSE(limits.contain(Money::ofCents(1101)));
}

TEST(SecurityRulesLimits, GoByTheTickOfTheSecurity)
{
    const DayLimits limits = dayLimits(QStringLiteral("510300"), Money::ofSteps(39990)); // 3.999
    EXPECT_EQ(limits.lowest.text(), QStringLiteral("3.599"));                            // 3.5991
    EXPECT_EQ(limits.highest.text(), QStringLiteral("4.399"));                           // 4.3989
}

TEST(SecurityRulesLimits, AreNotThereForBonds)
{
    EXPECT_FALSE(rulesOf(QStringLiteral("019547")).limits(Money::ofCents(10000)));
}

TEST(SecurityRules, HaveTheTickAndTheDecimalsOfTheSecurity)
{
    EXPECT_EQ(rulesOf(QStringLiteral("600519")).tick, Money::ofCents(1));
    EXPECT_EQ(rulesOf(QStringLiteral("600519")).decimals(), 2);
    const SecurityRules fund = rulesOf(QStringLiteral("510300"));
    EXPECT_EQ(fund.decimals(), 3);
    EXPECT_TRUE(fund.isOnTick(Money::ofSteps(39990)));
    EXPECT_FALSE(fund.isOnTick(Money::ofSteps(39995)));
    EXPECT_EQ(fund.nearestTick(Money::ofSteps(39995)), Money::ofSteps(40000));
}

TEST(SecurityRules, GiveSharesByTheHundred)
{
    const SecurityRules share = rulesOf(QStringLiteral("600519"));
    EXPECT_TRUE(share.isWholeQuantity(300));
    EXPECT_FALSE(share.isWholeQuantity(350));
    EXPECT_FALSE(share.isWholeQuantity(0));
    EXPECT_EQ(share.wholeQuantity(399), 300);
}

TEST(SecurityRules, SellWhatIsOddOfAHoldingAtOnce)
{
    const SecurityRules share = rulesOf(QStringLiteral("600519"));
    for (const qint64 allowed : {50, 150, 250, 100, 200}) {
        EXPECT_TRUE(share.isSaleQuantity(allowed, 250)) << allowed;
    }
    for (const qint64 refused : {20, 120, 0, 350}) {
        EXPECT_FALSE(share.isSaleQuantity(refused, 250)) << refused;
    }
    const SecurityRules star = rulesOf(QStringLiteral("688001"));
    EXPECT_TRUE(star.isSaleQuantity(150, 150));
    EXPECT_FALSE(star.isSaleQuantity(150, 350)) << "what is less than 200 goes alone when it is all";
}

TEST(SecurityRules, GiveSharesOfTheStarMarketSinglyFromTwoHundredOn)
{
    const SecurityRules star = rulesOf(QStringLiteral("688981"));
    EXPECT_FALSE(star.isWholeQuantity(199));
    EXPECT_TRUE(star.isWholeQuantity(200));
    EXPECT_TRUE(star.isWholeQuantity(201));
    EXPECT_EQ(star.wholeQuantity(199), 0);
    EXPECT_EQ(star.wholeQuantity(357), 357);
}

TEST(SecurityRules, GiveBondsByTheTen)
{
    const SecurityRules bond = rulesOf(QStringLiteral("113050"));
    EXPECT_TRUE(bond.isWholeQuantity(20));
    EXPECT_FALSE(bond.isWholeQuantity(25));
}

} // namespace
} // namespace Trading
