#include "terminal/data/PerShare.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(PerShare, IsExactToEightDecimals)
{
    EXPECT_EQ(decimalSteps("0.2992855"), 29928550);
    EXPECT_EQ(decimalSteps("0.00000001"), 1);
    EXPECT_EQ(decimalSteps("25.911"), 2591100000);
    EXPECT_EQ(decimalSteps("1"), 100000000);
    EXPECT_EQ(decimalSteps("-0.5"), -50000000);
    EXPECT_EQ(decimalSteps("999999.99999999"), 99999999999999);
}

TEST(PerShare, RefusesWhatIsNoPlainDecimalNumber)
{
    for (const char *const text : {"", "-", ".", ".5", "5.", "1,5", "1e3", "0x1", "1.2.3", " 1",
                                   "0.123456789", "1000000", "nan", "+1", "１"}) {
        EXPECT_EQ(decimalSteps(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace Terminal
