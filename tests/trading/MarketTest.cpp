#include "trading/Market.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(Market, HasLettersInQuestionsAndANumberInAnswers)
{
    EXPECT_EQ(marketLetters(Market::Shanghai), QStringLiteral("SH"));
    EXPECT_EQ(marketNumber(Market::Shanghai), QStringLiteral("1"));
    EXPECT_EQ(marketLetters(Market::Shenzhen), QStringLiteral("SZ"));
    EXPECT_EQ(marketNumber(Market::Shenzhen), QStringLiteral("2"));
}

TEST(Market, IsKnownByItsCodes)
{
    for (const Market market : {Market::Shanghai, Market::Shenzhen}) {
        EXPECT_EQ(marketOfLetters(marketLetters(market)), market);
        EXPECT_EQ(marketOfNumber(marketNumber(market)), market);
    }
}

TEST(Market, IsNotKnownByAnythingElse)
{
    for (const char *const text : {"", "sh", "HK", "SH ", "1"}) {
        EXPECT_EQ(marketOfLetters(QLatin1String(text)), std::nullopt) << text;
    }
    for (const char *const text : {"", "0", "3", "01", "SH"}) {
        EXPECT_EQ(marketOfNumber(QLatin1String(text)), std::nullopt) << text;
    }
}

TEST(Market, HasTheNumberByWhichHostsKnowItAsItsValue)
{
    EXPECT_EQ(static_cast<int>(Market::Shenzhen), 0);
    EXPECT_EQ(static_cast<int>(Market::Shanghai), 1);
}

} // namespace Trading
