#include "trading/OrderStatusName.h"

#include "tradechartobject/common/OrderStatusTable.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

TEST(OrderStatusName, IsThereForEveryStatusInEitherLetterCase)
{
    for (const TradeChart::OrderStatusRow &row : TradeChart::OrderStatusTable()) {
        ASSERT_NE(orderStatusName(row.code), nullptr) << row.code.data();
        EXPECT_STREQ(orderStatusName(QString(row.code).toLower()), orderStatusName(row.code));
    }
}

TEST(OrderStatusName, IsMissingForACodeThatTheVocabularyDoesNotHave)
{
    EXPECT_EQ(orderStatusName(QStringLiteral("zz")), nullptr);
}

} // namespace
} // namespace Trading
