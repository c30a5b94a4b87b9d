#include "terminal/data/CellNumber.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(CellNumber, HasADecimalPoint)
{
    EXPECT_EQ(numberOf("1732.5"), 1732.5);
    EXPECT_EQ(numberOf("-2.49"), -2.49);
    EXPECT_EQ(numberOf("9.209999999999999"), 9.209999999999999);
    EXPECT_EQ(numberOf("1.2345678912e+10"), 12345678912.0);
    EXPECT_EQ(numberOf("0"), 0.0);
}

TEST(CellNumber, MayBeInGroupsWhereThatIsNoDecimalComma)
{
    EXPECT_EQ(numberOf("1,732.50"), 1732.5);
    EXPECT_FALSE(numberOf("1,732").has_value());
    EXPECT_EQ(countOf("1,234,567"), 1234567.0);
    EXPECT_FALSE(countOf("1,23").has_value());
    EXPECT_FALSE(countOf("12,34,567").has_value());
}

TEST(CellNumber, IsNothingElse)
{
    for (const char *const cell : {"", "-", "--", ".", ".5.", "1.2.3", "x", "nan", "inf", "1e400", "1.05E+08",
                                   "1.23M", "12 3", "1,7.3,2", "1,732.5,6"}) {
        const auto number = numberOf(cell);
        EXPECT_FALSE(number.has_value()) << cell << ": " << *number;
    }
}

} // namespace
} // namespace Terminal
