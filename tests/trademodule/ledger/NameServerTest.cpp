#include "trademodule/ledger/NameServer.h"

#include "tests/support/HangingNames.h"

#include <gtest/gtest.h>

namespace TradeModule {

using namespace std::chrono_literals;

TEST(NameServer, AnswersForAHostThatIsThere)
{
    EXPECT_TRUE(nameServerAnswers(QStringLiteral("localhost"), 10s));
}

TEST(NameServer, IsNotNeededForAnAddress)
{
    EXPECT_TRUE(nameServerAnswers(QStringLiteral("127.0.0.1"), 0s));
}

TEST(NameServer, IsWaitedForOnlySoLong)
{
    const HangingNames hanging;
    EXPECT_FALSE(nameServerAnswers(QLatin1String(HangingNames::host), 50ms));
}

} // namespace TradeModule
