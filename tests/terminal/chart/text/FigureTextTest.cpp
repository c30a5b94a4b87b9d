#include "terminal/chart/text/FigureText.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(FigureText, ShortensVolumesInTheReadersUnits)
{
    EXPECT_EQ(volumeText(358.18e4, QLocale::Chinese), QStringLiteral(u"358.18万"));
    EXPECT_EQ(volumeText(1.2e8, QLocale::Chinese), QStringLiteral(u"1.20亿"));
    EXPECT_EQ(volumeText(999, QLocale::Chinese), QStringLiteral("999"));
    EXPECT_EQ(volumeText(2.5e6, QLocale::English), QStringLiteral("2.50M"));
}

TEST(FigureText, TakesTheLargerUnitWhereRoundingLeadsToIt)
{
    EXPECT_EQ(volumeText(99999999, QLocale::Chinese), QStringLiteral(u"1.00亿"));
    EXPECT_EQ(volumeText(99994999, QLocale::Chinese), QStringLiteral(u"9999.50万"));
    EXPECT_EQ(volumeText(9999.6, QLocale::Chinese), QStringLiteral(u"1.00万"));
    EXPECT_EQ(volumeText(9999.4, QLocale::Chinese), QStringLiteral("9999"));
    EXPECT_EQ(volumeText(999999, QLocale::English), QStringLiteral("1.00M"));
}

TEST(FigureText, WritesAChangeWithItsSign)
{
    EXPECT_EQ(changeText(0.0123), QStringLiteral("+1.23%"));
    EXPECT_EQ(changeText(-0.0123), QStringLiteral("-1.23%"));
}

} // namespace
} // namespace Terminal
