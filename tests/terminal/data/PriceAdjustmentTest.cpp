#include "terminal/data/PriceAdjustment.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

constexpr int decimals = 2;

YuanPerShare yuanPerShare(const char *text)
{
    return YuanPerShare::ofSteps(decimalSteps(text).value());
}

SharesPerShare shares(const char *text)
{
    return SharesPerShare::ofSteps(decimalSteps(text).value());
}

CorporateAction dividendOn(int day, const char *perShare)
{
    return {onDay(day), yuanPerShare(perShare)};
}

CorporateAction bonusOn(int day, const char *perShare)
{
    return {onDay(day), {}, shares(perShare)};
}

Bar barOn(int day, double close)
{
    return {day, 0, close - 0.1, close + 0.2, close - 0.3, close, 500};
}

/// Of bars of days, oldest first.
Loaded<PriceAdjustment> adjustmentOf(const CorporateActions &actions, const Bars &bars)
{
    return PriceAdjustment::of(actions, dayOf(bars.back()), [&bars](Trading::TradingDate day) {
        std::optional<Bar> last;
        for (const Bar &bar : bars) {
            last = dayOf(bar) < day ? std::optional(bar) : last;
        }
        return last;
    });
}

TEST(PriceAdjustment, LeavesEverythingAsItIsWithoutActions)
{
    const PriceAdjustment none;
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.factorOn(onDay(20240102)), 1);
    EXPECT_EQ(none.referencePrice(10.01, onDay(20240102), onDay(20240103), decimals), 10.01);
    EXPECT_EQ(none.adjusted({barOn(20240102, 10)}).front().close, 10);
}

/// 20.00, then a dividend of 1.00: what stood at 20.00 compares with 19.00.
TEST(PriceAdjustment, ChangesThePricesBeforeAnExDateOnly)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240103, 19.5)};
    const Bars adjusted = adjustmentOf({dividendOn(20240103, "1")}, bars).value().adjusted(bars);
    EXPECT_DOUBLE_EQ(adjusted[0].open, 19.9 * 0.95);
    EXPECT_DOUBLE_EQ(adjusted[0].high, 20.2 * 0.95);
    EXPECT_DOUBLE_EQ(adjusted[0].low, 19.7 * 0.95);
    EXPECT_DOUBLE_EQ(adjusted[0].close, 19);
    EXPECT_EQ(adjusted[1].close, 19.5); // the latest prices stay, to the last bit
    EXPECT_EQ(adjusted[1].high, 19.7);
}

TEST(PriceAdjustment, LeavesVolumesAsTheyWere)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240103, 10)};
    const Bars adjusted = adjustmentOf({bonusOn(20240103, "1")}, bars).value().adjusted(bars);
    EXPECT_EQ(adjusted[0].volume, 500);
    EXPECT_EQ(adjusted[1].volume, 500);
}

/// 20.00 → one share becomes two → 10.00; 12.00 → dividend 0.60 → 11.40. The first bar: 20 × 0.5 × 0.95.
TEST(PriceAdjustment, ChainsTheActionsOfYears)
{
    const Bars bars = {barOn(20220104, 20), barOn(20220105, 10), barOn(20230104, 12), barOn(20230105, 11)};
    const PriceAdjustment adjustment =
        adjustmentOf({bonusOn(20220105, "1"), dividendOn(20230105, "0.6")}, bars).value();
    EXPECT_DOUBLE_EQ(adjustment.factorOn(onDay(20220104)), 0.475);
    EXPECT_DOUBLE_EQ(adjustment.factorOn(onDay(20220105)), 0.95);
    EXPECT_DOUBLE_EQ(adjustment.factorOn(onDay(20230104)), 0.95);
    EXPECT_EQ(adjustment.factorOn(onDay(20230105)), 1);
    EXPECT_DOUBLE_EQ(adjustment.adjusted(bars).front().close, 9.5);
}

/// 000001: 19.24 before 20130620 (6 shares, 1.70 yuan for 10), 11.78 before 20140612 (2 shares, 1.60 yuan),
/// 19.80 before 20150413 (2, 1.74), 10.44 before 20160616 (2, 1.53). The reference prices are (19.24 - 0.17)
/// ÷ 1.6 = 11.91875, (11.78 - 0.16) ÷ 1.2 = 9.68333…, (19.80 - 0.174) ÷ 1.2 = 16.355, 8.5725.
TEST(PriceAdjustment, HoldsTheBarsOfFourExDatesTogether)
{
    const Bars bars = {barOn(20130619, 19.24), barOn(20130620, 11.18), barOn(20140611, 11.78),
                       barOn(20140612, 9.71),  barOn(20150410, 19.80), barOn(20150413, 16.54),
                       barOn(20160615, 10.44), barOn(20160616, 8.57)};
    const PriceAdjustment adjustment = adjustmentOf({{onDay(20130620), yuanPerShare("0.17"), shares("0.6")},
                                                     {onDay(20140612), yuanPerShare("0.16"), shares("0.2")},
                                                     {onDay(20150413), yuanPerShare("0.174"), shares("0.2")},
                                                     {onDay(20160616), yuanPerShare("0.153"), shares("0.2")}},
                                                    bars)
                                           .value();
    const double last = 8.5725 / 10.44;
    const double lastTwo = 16.355 / 19.80 * last;
    const double lastThree = (11.62 / 1.2) / 11.78 * lastTwo;
    const double all = 11.91875 / 19.24 * lastThree;
    EXPECT_NEAR(adjustment.factorOn(onDay(20160615)), last, 1e-15);
    EXPECT_NEAR(adjustment.factorOn(onDay(20150410)), lastTwo, 1e-15);
    EXPECT_NEAR(adjustment.factorOn(onDay(20140611)), lastThree, 1e-15);
    EXPECT_NEAR(adjustment.factorOn(onDay(20130619)), all, 1e-15);
    // the exchange's reference prices, in cents
    EXPECT_EQ(adjustment.referencePrice(19.24, onDay(20130619), onDay(20130620), decimals), 11.92);
    EXPECT_EQ(adjustment.referencePrice(11.78, onDay(20140611), onDay(20140612), decimals), 9.68);
    EXPECT_EQ(adjustment.referencePrice(19.80, onDay(20150410), onDay(20150413), decimals), 16.36);
    EXPECT_EQ(adjustment.referencePrice(10.44, onDay(20160615), onDay(20160616), decimals), 8.57);
}

/// The share does not trade on the ex-date: the price before it is the last one there was.
TEST(PriceAdjustment, GoesByTheLastPriceBeforeASuspension)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240201, 10.5)};
    const PriceAdjustment adjustment = adjustmentOf({bonusOn(20240110, "1")}, bars).value();
    EXPECT_DOUBLE_EQ(adjustment.factorOn(onDay(20240102)), 0.5);
    EXPECT_EQ(adjustment.referencePrice(20, onDay(20240102), onDay(20240201), decimals), 10);
}

/// 20.00 becomes two shares of 10.00, each of which pays 1.00: 20 × 0.5 × 0.9.
TEST(PriceAdjustment, ChainsTwoActionsOfOneSuspension)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240201, 9)};
    const PriceAdjustment adjustment =
        adjustmentOf({bonusOn(20240110, "1"), dividendOn(20240117, "1")}, bars).value();
    EXPECT_DOUBLE_EQ(adjustment.factorOn(onDay(20240102)), 0.45);
    EXPECT_EQ(adjustment.referencePrice(20, onDay(20240102), onDay(20240201), decimals), 9);
}

TEST(PriceAdjustment, DoesNotKnowYetWhatIsAfterTheLastBar)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240103, 20)};
    EXPECT_TRUE(adjustmentOf({bonusOn(20240104, "1")}, bars).value().isEmpty());
    EXPECT_FALSE(adjustmentOf({bonusOn(20240103, "1")}, bars).value().isEmpty());
}

TEST(PriceAdjustment, LeavesOutWhatIsBeforeTheFirstBar)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240103, 20)};
    EXPECT_TRUE(adjustmentOf({bonusOn(20240102, "1")}, bars).value().isEmpty());
}

/// (10.01 - 0.005) lies half-way between two cents, and goes up.
TEST(PriceAdjustment, RoundsAReferencePriceAsTheExchangeDoes)
{
    const Bars bars = {barOn(20240102, 10.01), barOn(20240103, 10)};
    const PriceAdjustment adjustment = adjustmentOf({dividendOn(20240103, "0.005")}, bars).value();
    EXPECT_EQ(adjustment.referencePrice(10.01, onDay(20240102), onDay(20240103), decimals), 10.01);
    EXPECT_EQ(adjustment.referencePrice(10.01, onDay(20240102), onDay(20240103), 3), 10.005);
}

TEST(PriceAdjustment, TellsOfADividendAsHighAsThePrice)
{
    const Bars bars = {barOn(20240102, 20), barOn(20240103, 20)};
    const auto adjustment = adjustmentOf({dividendOn(20240103, "200")}, bars);
    EXPECT_FALSE(adjustment);
    EXPECT_TRUE(adjustment.error().contains(QStringLiteral("2024-01-03"))) << qPrintable(adjustment.error());
}

} // namespace
} // namespace Terminal
