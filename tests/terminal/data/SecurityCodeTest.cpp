#include "terminal/data/SecurityCode.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

QString read(const char *text)
{
    const auto code = SecurityCode::of(QString::fromUtf8(text));
    return code ? code->text() : QString();
}

TEST(SecurityCode, IsReadWithAndWithoutItsMarket)
{
    for (const char *const text : {"600519.SH", "600519.SS", "600519.XSHG", "sh600519", "sh.600519",
                                   "SHSE.600519", "SH#600519", "=\"600519.sh\""}) {
        EXPECT_EQ(read(text), QStringLiteral("600519.SH")) << text;
    }
    for (const char *const text : {"000001.SZ", "000001.XSHE", "sz000001", "SZSE.000001"}) {
        EXPECT_EQ(read(text), QStringLiteral("000001.SZ")) << text;
    }
    for (const char *const text : {"000001", "'000001", "=\"000001\"", " 000001 "}) {
        EXPECT_EQ(read(text), QStringLiteral("000001")) << text;
    }
}

TEST(SecurityCode, IsNoneOfAnotherMarketOrLength)
{
    for (const char *const text : {"", "1", "00700", "00700.HK", "600519.HK", "830799.BJ", "AAPL", "6005190",
                                   "sh.600519.SZ", "600519.SHX"}) {
        EXPECT_EQ(read(text), QString()) << text;
    }
}

TEST(SecurityCode, AgreesWithOneThatLeavesTheMarketOut)
{
    const auto code = [](const char *text) { return *SecurityCode::of(QLatin1String(text)); };
    EXPECT_TRUE(code("000001").agreesWith(code("000001.SZ")));
    EXPECT_FALSE(code("000001.SH").agreesWith(code("000001.SZ")));
    EXPECT_FALSE(code("000001").agreesWith(code("000002")));
}

} // namespace
} // namespace Terminal
