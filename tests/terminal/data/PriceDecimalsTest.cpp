#include "terminal/data/PriceDecimals.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(PriceDecimals, AreTwoOfShares)
{
    EXPECT_EQ(priceDecimals({{20240102, 0, 10.1, 10.29, 9.87, 10.07, 1}}), 2);
    EXPECT_EQ(priceDecimals({}), 2);
}

TEST(PriceDecimals, AreThreeOfFunds)
{
    EXPECT_EQ(
        priceDecimals({{20240102, 0, 5.24, 5.25, 5.23, 5.24, 1}, {20240103, 0, 5.244, 5.25, 5.23, 5.237, 1}}),
        3);
}

} // namespace
} // namespace Terminal
