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
    EXPECT_EQ(changeText(0.0123), QStringLiteral("+1.23%"));
    EXPECT_EQ(changeText(-0.0123), QStringLiteral("-1.23%"));
}

} // namespace
} // namespace Terminal
