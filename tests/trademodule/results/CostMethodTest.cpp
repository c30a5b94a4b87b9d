#include "trademodule/results/CostMethod.h"

#include <gtest/gtest.h>

namespace TradeModule {

TEST(CostMethodTest, HasAWordForEachMethod)
{
    for (const CostMethod method : {CostMethod::Average, CostMethod::Diluted, CostMethod::Fifo}) {
        EXPECT_EQ(costMethodOf(wordOf(method)), method);
    }
    EXPECT_EQ(costMethodOf(QStringLiteral("lifo")), std::nullopt);
}

} // namespace TradeModule
