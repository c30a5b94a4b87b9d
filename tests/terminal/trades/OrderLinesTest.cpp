#include "terminal/trades/OrderLines.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;

TEST(OrderLinesTags, StandAtTheHeightOfTheirPrices)
{
    EXPECT_THAT(tagTops({10, 50, 90}, 20, 0, 200), ElementsAre(10, 50, 90));
}

TEST(OrderLinesTags, MakeRoomForOneAnother)
{
    EXPECT_THAT(tagTops({10, 12, 14}, 20, 0, 200), ElementsAre(10, 32, 54));
}

TEST(OrderLinesTags, StayInThePane)
{
    EXPECT_THAT(tagTops({-10, 195}, 20, 0, 200), ElementsAre(0, 180));
    EXPECT_THAT(tagTops({170, 180, 190}, 20, 0, 200), ElementsAre(136, 158, 180));
}

} // namespace
} // namespace Terminal
