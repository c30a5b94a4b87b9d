#include "terminal/data/SecurityList.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using SecurityListFile = DataFiles;

TEST_F(SecurityListFile, NamesTheSecurities)
{
    const auto securities = readSecurities(
        write(QStringLiteral("s.csv"),
              QStringLiteral(u"code,market,name\n000001,SZ,平安银行\n600519,SH,贵州茅台\n").toUtf8()));
    ASSERT_TRUE(securities) << qPrintable(securities.error());
    const Security *const security = findSecurity(securities.value(), QStringLiteral("000001"));
    ASSERT_NE(security, nullptr);
    EXPECT_EQ(security->market, Market::Shenzhen);
    EXPECT_EQ(security->name, QStringLiteral(u"平安银行"));
    EXPECT_EQ(findSecurity(securities.value(), QStringLiteral("1")), nullptr);
}

class SecurityListBadLine : public DataFiles, public ::testing::WithParamInterface<BadLine>
{
};

TEST_P(SecurityListBadLine, StopsTheFileAndIsNamed)
{
    const QString path = write(QStringLiteral("s.csv"),
                               QByteArray("code,market,name\n000001,SZ,One\n") + GetParam().line + "\n");
    const auto securities = readSecurities(path);
    ASSERT_FALSE(securities);
    EXPECT_TRUE(securities.error().startsWith(path + QStringLiteral(":3: ")))
        << qPrintable(securities.error());
    EXPECT_TRUE(securities.error().contains(QLatin1String(GetParam().reason)))
        << qPrintable(securities.error());
}

INSTANTIATE_TEST_SUITE_P(Lines, SecurityListBadLine,
                         ::testing::Values(BadLine{"noCode", ",SH,Name", "not a security code"},
                                           BadLine{"codeWithBlank", "60 1,SH,Name", "not a security code"},
                                           BadLine{"twice", "000001,SH,Name", "second time"},
                                           BadLine{"unknownMarket", "600519,HK,Name", "neither SH nor SZ"},
                                           BadLine{"noName", "600519,SH, ", "name is missing"}),
                         ByName());

} // namespace
} // namespace Terminal
