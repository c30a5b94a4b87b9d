#include "trademodule/results/CostBasis.h"

#include "tests/trademodule/results/ReckoningTest.h"

namespace TradeModule {

TEST(CostBasisTest, GoesOnFromWhatWasKept)
{
    for (const CostMethod method : {CostMethod::Average, CostMethod::Diluted}) {
        CostBasis whole(method);
        whole.add(300, yuan(3005));
        whole.sell(100, yuan(1194.4));

        CostBasis restored = CostBasis::restored(method, whole.quantity(), whole.exactCost());
        whole.sell(50, yuan(600));
        restored.sell(50, yuan(600));

        EXPECT_DOUBLE_EQ(restored.exactCost(), whole.exactCost());
        EXPECT_EQ(restored.quantity(), 150);
    }
}

} // namespace TradeModule
