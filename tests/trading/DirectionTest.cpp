#include "trading/Direction.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(Direction, HasACodeForOrdersAndALetterForTrades)
{
    EXPECT_STREQ(directionCode(Direction::Buy), "0B");
    EXPECT_STREQ(directionLetter(Direction::Buy), "B");
    EXPECT_STREQ(directionCode(Direction::Sell), "0S");
    EXPECT_STREQ(directionLetter(Direction::Sell), "S");
}

TEST(Direction, IsKnownByEveryCodeOfTheVocabulary)
{
    for (const char *const code : {"0B", "0b", "0a", "0q", "0.", "B"}) {
        EXPECT_EQ(directionOfCode(QLatin1String(code)), Direction::Buy) << code;
    }
    for (const char *const code : {"0S", "0g", "0r", "0v", "0`", "S"}) {
        EXPECT_EQ(directionOfCode(QLatin1String(code)), Direction::Sell) << code;
    }
}

TEST(Direction, IsNotKnownByAnythingElse)
{
    for (const char *const code : {"", "b", "s", "0", "0Z", "B ", "0BB"}) {
        EXPECT_EQ(directionOfCode(QLatin1String(code)), std::nullopt) << code;
    }
}

} // namespace Trading
