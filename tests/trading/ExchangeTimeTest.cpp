#include "trading/ExchangeTime.h"

#include "tests/support/TimeZone.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace Trading {

TEST(ExchangeTime, IsEightHoursAheadWhereverTheMachineStands)
{
    const TimeZone elsewhere(westernmostZone); // puts the clock of the tests back, too

    EXPECT_TRUE(enterExchangeTime());

    EXPECT_EQ(QDateTime::currentDateTime().offsetFromUtc(), 8 * 60 * 60);
}

} // namespace Trading
