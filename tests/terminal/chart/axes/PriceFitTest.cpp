#include "terminal/chart/axes/PriceFit.h"

#include <gmock/gmock.h>

#include <cfloat>
#include <cmath>
#include <limits>

namespace Terminal {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

constexpr double fitHeight = 600;

TEST(PriceFit, HoldsTheCandlesWithSomeAir)
{
    const PriceSpan fit = fitPrices({10, 20}, {}, fitHeight);
    EXPECT_LT(fit.low, 10);
    EXPECT_GT(fit.high, 20);
    EXPECT_LT(fit.high - fit.low, 13);
}

TEST(PriceFit, LeavesTheCandlesMostOfATinyPane)
{
    const PriceSpan fit = fitPrices({10, 20}, {}, 10);
    EXPECT_NEAR(fit.high - fit.low, 20, 1e-9);
}

TEST(PriceFit, OpensAFlatScale)
{
    const PriceSpan fit = fitPrices({10, 10}, {}, fitHeight);
    EXPECT_LT(fit.low, 10);
    EXPECT_GT(fit.high, 10);
}

TEST(PriceFit, GrantsAWishThatIsNear)
{
    const PriceSpan fit = fitPrices({10, 20}, {{9, 21}}, fitHeight);
    EXPECT_LT(fit.low, 9);
    EXPECT_GT(fit.high, 21);
}

TEST(PriceFit, GrantsTheNearBoundOfAWideWish)
{
    const PriceSpan fit = fitPrices({10, 20}, {{8, 500}}, fitHeight);
    EXPECT_LT(fit.low, 8);
    EXPECT_LT(fit.high, 25);
}

class PriceFitWithoutAWish : public ::testing::TestWithParam<PriceSpan>
{
};

TEST_P(PriceFitWithoutAWish, LeavesTheScaleAlone)
{
    const PriceSpan plain = fitPrices({10, 20}, {}, fitHeight);
    const PriceSpan fit = fitPrices({10, 20}, {GetParam()}, fitHeight);
    EXPECT_DOUBLE_EQ(fit.low, plain.low);
    EXPECT_DOUBLE_EQ(fit.high, plain.high);
}

INSTANTIATE_TEST_SUITE_P(Spans, PriceFitWithoutAWish,
                         ::testing::Values(PriceSpan{DBL_MAX, DBL_MIN}, PriceSpan{15, 14},
                                           PriceSpan{-infinity, infinity}, PriceSpan{std::nan(""), 15},
                                           PriceSpan{15, std::nan("")}, PriceSpan{500, 500}, PriceSpan{1, 1},
                                           PriceSpan{12, 18}));

} // namespace
} // namespace Terminal
