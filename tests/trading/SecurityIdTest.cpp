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

} // namespace Trading
