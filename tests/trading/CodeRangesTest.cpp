#include "trading/CodeRanges.h"
#include "tests/support/ByName.h"

#include <gtest/gtest.h>

namespace Trading {

namespace {

struct KnownCode
{
    std::string name;
    std::string code;
    Market market;
    SecurityClass kind;
};

class CodeRangesOfCode : public ::testing::TestWithParam<KnownCode>
{
};

} // namespace

TEST_P(CodeRangesOfCode, TellsMarketAndClass)
{
    const auto range = CodeRanges::of(QString::fromStdString(GetParam().code));

    ASSERT_TRUE(range);
    EXPECT_EQ(range->market, GetParam().market);
    EXPECT_EQ(range->kind, GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Of, CodeRangesOfCode,
    ::testing::Values(KnownCode{"MainBoardOfShanghai", "600000", Market::Shanghai, SecurityClass::Share},
                      KnownCode{"StarMarket", "688981", Market::Shanghai, SecurityClass::Share},
                      KnownCode{"FundOfShanghai", "510300", Market::Shanghai, SecurityClass::Fund},
                      KnownCode{"ConvertibleOfShanghai", "113050", Market::Shanghai, SecurityClass::Bond},
                      KnownCode{"TreasuryOfShanghai", "019547", Market::Shanghai, SecurityClass::Bond},
                      KnownCode{"RepoOfShanghai", "204001", Market::Shanghai, SecurityClass::Repo},
                      KnownCode{"DollarShares", "900901", Market::Shanghai, SecurityClass::Share},
                      KnownCode{"MainBoardOfShenzhen", "000001", Market::Shenzhen, SecurityClass::Share},
                      KnownCode{"GrowthBoard", "301000", Market::Shenzhen, SecurityClass::Share},
                      KnownCode{"FundOfShenzhen", "159915", Market::Shenzhen, SecurityClass::Fund},
                      KnownCode{"ListedOpenFund", "163402", Market::Shenzhen, SecurityClass::Fund},
                      KnownCode{"ConvertibleOfShenzhen", "128136", Market::Shenzhen, SecurityClass::Bond},
                      KnownCode{"RepoOfShenzhen", "131810", Market::Shenzhen, SecurityClass::Repo},
                      KnownCode{"HongKongDollarShares", "200002", Market::Shenzhen, SecurityClass::Share},
                      KnownCode{"Beijing", "920002", Market::Beijing, SecurityClass::Share},
                      KnownCode{"BeijingBefore", "830799", Market::Beijing, SecurityClass::Share},
                      KnownCode{"ThirdBoard", "400001", Market::OverTheCounter, SecurityClass::Share}),
    ByName());

TEST(CodeRanges, TellTheSharesThatRightsBecome)
{
    const auto rights = CodeRanges::of(QStringLiteral("700000"));

    ASSERT_TRUE(rights);
    EXPECT_EQ(rights->kind, SecurityClass::Rights);
    EXPECT_STREQ(rights->listed, "600");
}

TEST(CodeRanges, HaveNoneForACodeThatAMarketDoesNotGive)
{
    EXPECT_FALSE(CodeRanges::on(Market::Shanghai, QStringLiteral("300750")));
    EXPECT_FALSE(CodeRanges::of(QStringLiteral("999999")));
    EXPECT_FALSE(CodeRanges::of(QStringLiteral("00700")));
}

} // namespace Trading
