#include "terminal/data/CorporateAction.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <string>

namespace Terminal {
namespace {

using Trading::Money;

/// Reckoned by hand: a share is worth (close before - dividend + rights × their price) ÷ (1 + bonus + rights)
/// after the ex-date, and the factor is that by the close before.
struct HandCase
{
    const char *name;
    const char *close;
    const char *dividend;
    const char *bonus;
    const char *rights;
    const char *rightsPrice;
    long double factor;
};

Money yuan(const char *text)
{
    return Money::ofExactYuan(std::stod(text)).value();
}

CorporateAction actionOf(const HandCase &row)
{
    CorporateAction action{onDay(20240102)};
    action.dividend = YuanPerShare::ofSteps(decimalSteps(row.dividend).value());
    action.bonus = SharesPerShare::ofSteps(decimalSteps(row.bonus).value());
    action.rights = SharesPerShare::ofSteps(decimalSteps(row.rights).value());
    action.rightsPrice = YuanPerShare::ofSteps(decimalSteps(row.rightsPrice).value());
    return action;
}

class CorporateActionByHand : public ::testing::TestWithParam<HandCase>
{
};

TEST_P(CorporateActionByHand, HasItsFactor)
{
    const auto factor = adjustmentFactor(actionOf(GetParam()), yuan(GetParam().close));
    ASSERT_TRUE(factor);
    EXPECT_DOUBLE_EQ(*factor, static_cast<double>(GetParam().factor));
}

INSTANTIATE_TEST_SUITE_P(
    Factors, CorporateActionByHand,
    ::testing::Values(
        // 20.00 less 1.00 leaves 19.00
        HandCase{"Dividend", "20.00", "1", "0", "0", "0", 19.0L / 20.0L},
        // one share becomes two
        HandCase{"TenForTen", "28.60", "0", "1", "0", "0", 1.0L / 2.0L},
        // 13 shares for 10
        HandCase{"ThreeForTen", "61.10", "0", "0.3", "0", "0", 10.0L / 13.0L},
        // a fund that splits one into two is the same as one more for each
        HandCase{"Split", "3.000", "0", "1", "0", "0", 1.0L / 2.0L},
        // two become one, which is worth both
        HandCase{"Merger", "0.500", "0", "-0.5", "0", "0", 2.0L},
        // 3 for 10 at 5.00: (10.00 + 0.3 × 5.00) ÷ 1.3 = 11.5 ÷ 1.3
        HandCase{"Rights", "10.00", "0", "0", "0.3", "5", 11.5L / 13.0L},
        // rights above the price make the old share worth more: (4 + 0.5 × 6) ÷ 1.5 = 14 ÷ 3
        HandCase{"DearRights", "4.00", "0", "0", "0.5", "6", 14.0L / 12.0L},
        // 000001 on 20130620, 6 shares and 1.70 yuan for 10: (19.24 - 0.17) ÷ 1.6 = 11.91875
        HandCase{"BonusAndDividend", "19.24", "0.17", "0.6", "0", "0", 11.91875L / 19.24L},
        // 000001 on 20160616, 2 shares and 1.53 yuan for 10: (10.44 - 0.153) ÷ 1.2 = 8.5725
        HandCase{"TwoForTenAndDividend", "10.44", "0.153", "0.2", "0", "0", 8.5725L / 10.44L},
        // all on one day: (12.00 - 0.10 + 0.2 × 6.00) ÷ (1 + 0.5 + 0.2) = 13.1 ÷ 1.7
        HandCase{"AllAtOnce", "12.00", "0.1", "0.5", "0.2", "6", 13.1L / 20.4L},
        // own shares receive nothing, so the announced 0.30 comes to 0.2992855 for each
        HandCase{"SevenDecimals", "15.00", "0.2992855", "0", "0", "0", 14.7007145L / 15.0L},
        // a cent of a dear share
        HandCase{"SmallDividend", "2000.00", "0.01", "0", "0", "0", 1999.99L / 2000.0L},
        // the highest bonus there was: 30 for 10
        HandCase{"ThirtyForTen", "100.00", "2", "3", "0", "0", 24.5L / 100.0L},
        // a bond fund in thousandths: 1.234 - 0.0345 = 1.1995
        HandCase{"Fund", "1.234", "0.0345", "0", "0", "0", 1.1995L / 1.234L}),
    ByName());

TEST(CorporateAction, HasNoFactorWhereNothingIsLeft)
{
    CorporateAction action{onDay(20240102)};
    action.dividend = YuanPerShare::ofSteps(10 * YuanPerShare::stepsPerUnit);
    EXPECT_EQ(adjustmentFactor(action, yuan("10.00")), std::nullopt);
    EXPECT_EQ(adjustmentFactor(action, yuan("9.99")), std::nullopt);
    EXPECT_NE(adjustmentFactor(action, yuan("10.01")), std::nullopt);
}

TEST(CorporateAction, HasNoFactorForAPriceOfNothing)
{
    EXPECT_EQ(adjustmentFactor({onDay(20240102)}, Money()), std::nullopt);
}

} // namespace
} // namespace Terminal
