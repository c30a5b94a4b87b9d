#include "trademodule/results/Figures.h"

#include "tests/trademodule/results/ReckoningTest.h"

namespace TradeModule {

TEST(FiguresTest, TellTheProfitInHundredthsOfAPercentOfTheCost)
{
    EXPECT_EQ(basisPoints(yuan(89.45), yuan(1005)), 890); // 8.9005 %
    EXPECT_EQ(basisPoints(yuan(-100), yuan(1000)), -1000);
    EXPECT_EQ(basisPoints(yuan(100), yuan(0)), 0);
    EXPECT_EQ(basisPoints(yuan(100), yuan(-50)), 0);
}

} // namespace TradeModule
