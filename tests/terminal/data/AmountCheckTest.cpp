#include "terminal/data/AmountCheck.h"
#include "tests/terminal/data/ManyForms.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

/// Volumes as they are written in a unit, and amounts beside them.
struct Written
{
    Bars bars;
    std::vector<double> amounts;
};

Written written(double sharesInUnit, double yuanInUnit)
{
    Written all{someDays(), {}};
    for (Bar &bar : all.bars) {
        all.amounts.push_back(bar.volume * (bar.high + bar.low) / 2 / yuanInUnit);
        bar.volume /= sharesInUnit;
    }
    return all;
}

TEST(AmountCheck, TellsSharesFromLotsInEveryUnitOfAmounts)
{
    for (const double yuan : {1.0, 1e3, 1e4, 1e8}) {
        const Written shares = written(1, yuan);
        EXPECT_EQ(checkAmounts(shares.bars, shares.amounts, {}).unit, VolumeUnit::Shares) << yuan;
        const Written lots = written(100, yuan);
        EXPECT_EQ(checkAmounts(lots.bars, lots.amounts, {}).unit, VolumeUnit::Lots) << yuan;
    }
}

TEST(AmountCheck, SeesPricesThatAreAdjusted)
{
    Written adjusted = written(100, 1);
    for (std::size_t i = 0; i < 40; ++i) {
        Bar &bar = adjusted.bars[i];
        for (double *const price : {&bar.open, &bar.high, &bar.low, &bar.close}) {
            *price *= 0.7;
        }
    }
    const AmountCheck check = checkAmounts(adjusted.bars, adjusted.amounts, {});
    EXPECT_EQ(check.unit, VolumeUnit::Lots);
    EXPECT_TRUE(check.isAdjusted);
    EXPECT_FALSE(check.wrongBar.has_value());
}

TEST(AmountCheck, FindsTheBarWhoseVolumeIsWrong)
{
    Written one = written(1, 1);
    one.bars[17].volume *= 10;
    EXPECT_EQ(checkAmounts(one.bars, one.amounts, {}).wrongBar, 17U);
}

TEST(AmountCheck, KnowsNothingWhereNoUnitFits)
{
    Written all = written(1, 1);
    for (double &amount : all.amounts) {
        amount *= 3;
    }
    EXPECT_FALSE(checkAmounts(all.bars, all.amounts, {}).unit.has_value());
}

TEST(AmountCheck, BearsTheRoundingOfSmallVolumes)
{
    Written lots = written(100, 1);
    for (Bar &bar : lots.bars) {
        bar.volume = 2;
    }
    for (std::size_t i = 0; i < lots.bars.size(); ++i) {
        lots.amounts[i] = lots.bars[i].close * 249; // two lots and a half
    }
    const AmountCheck check = checkAmounts(lots.bars, lots.amounts, {});
    EXPECT_EQ(check.unit, VolumeUnit::Lots);
    EXPECT_FALSE(check.wrongBar.has_value());
}

} // namespace
} // namespace Terminal
