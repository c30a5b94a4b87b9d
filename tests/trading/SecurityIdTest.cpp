#include "trading/SecurityId.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(SecurityId, IsAnotherOneOnTheOtherMarket)
{
    const SecurityId index{QStringLiteral("000001"), Market::Shanghai};
    const SecurityId bank{QStringLiteral("000001"), Market::Shenzhen};

    EXPECT_TRUE(index != bank);
    EXPECT_NE(qHash(index), qHash(bank));
    EXPECT_TRUE(index == (SecurityId{QStringLiteral("000001"), Market::Shanghai}));
}

TEST(SecurityId, HasACodeOfSixDigitsOnTheExchangesOfCharts)
{
    EXPECT_TRUE(isExchangeCode(QStringLiteral("600519")));
    for (const char *const other : {"", "60051", "6005190", "SH6005", "60051x"}) {
        EXPECT_FALSE(isExchangeCode(QLatin1String(other))) << other;
    }
    EXPECT_FALSE(isExchangeCode(QString(6, QChar(0x0661)))) << "digits of another script";
}

} // namespace Trading
