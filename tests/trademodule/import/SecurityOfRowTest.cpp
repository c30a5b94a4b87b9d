#include "trademodule/import/SecurityOfRow.h"

#include <gtest/gtest.h>

namespace TradeModule {

TEST(SecurityOfRow, IsNothingBeyondTheMarketsOfCharts)
{
    EXPECT_EQ(securityOfCode(QStringLiteral("000001.XSHE"))->market, Market::Shenzhen);
    EXPECT_FALSE(securityOfCode(QStringLiteral("830799")));
    EXPECT_FALSE(securityOfCode(QStringLiteral("00700")));
}

TEST(SecurityOfRow, GetsTheLeadingZerosBackThatASpreadsheetLost)
{
    EXPECT_EQ(securityOfCode(QStringLiteral("2798"))->code, QStringLiteral("002798"));
}

} // namespace TradeModule
