#include "trading/SecurityKind.h"
#include "tests/support/ByName.h"
#include "trading/MarketRules.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

struct KnownSecurity
{
    std::string name;
    Market market;
    const char *code;
    const char *called;
    SecurityKind kind;
};

class SecurityKindOf : public ::testing::TestWithParam<KnownSecurity>
{
};

TEST_P(SecurityKindOf, IsKnownByCodeAndName)
{
    const auto &[name, market, code, called, kind] = GetParam();
    EXPECT_EQ(kindOf({QLatin1String(code), market}, QString::fromUtf8(called)), kind);
}

constexpr Market sh = Market::Shanghai;
constexpr Market sz = Market::Shenzhen;

INSTANTIATE_TEST_SUITE_P(
    Each, SecurityKindOf,
    ::testing::Values(
        KnownSecurity{"ShareOfShanghai", sh, "600519", "贵州茅台", SecurityKind::MainShare},
        KnownSecurity{"ShareOfShenzhen", sz, "000001", "", SecurityKind::MainShare},
        KnownSecurity{"Warned", sh, "600145", "*ST新亿", SecurityKind::SpecialTreatment},
        KnownSecurity{"WarnedMildly", sz, "000502", "ST绿景", SecurityKind::SpecialTreatment},
        KnownSecurity{"WarnedBeforeItsReform", sz, "000509", "S*ST华塑", SecurityKind::SpecialTreatment},
        KnownSecurity{"WarnedOnAYoungBoard", sz, "300023", "*ST宝德", SecurityKind::ChiNextShare},
        KnownSecurity{"NamedLikeIt", sh, "600000", "BEST", SecurityKind::MainShare},
        KnownSecurity{"Star", sh, "688981", "", SecurityKind::StarShare},
        KnownSecurity{"StarReceipt", sh, "689009", "", SecurityKind::StarShare},
        KnownSecurity{"ChiNext", sz, "301000", "", SecurityKind::ChiNextShare},
        KnownSecurity{"Beijing", Market::Beijing, "920002", "", SecurityKind::BeijingShare},
        KnownSecurity{"InDollars", sh, "900901", "", SecurityKind::ForeignShare},
        KnownSecurity{"InHongKongDollars", sz, "200002", "", SecurityKind::ForeignShare},
        KnownSecurity{"Fund", sh, "510300", "沪深300ETF", SecurityKind::Fund},
        KnownSecurity{"FundOfStarByCode", sh, "588000", "", SecurityKind::YoungBoardFund},
        KnownSecurity{"FundOfChiNextByName", sz, "159915", "创业板ETF", SecurityKind::YoungBoardFund},
        KnownSecurity{"FundWithoutAName", sz, "159915", "", SecurityKind::Fund},
        KnownSecurity{"Treasury", sh, "019547", "", SecurityKind::Bond},
        KnownSecurity{"Convertible", sz, "128136", "", SecurityKind::ConvertibleBond},
        KnownSecurity{"Repo", sh, "204001", "", SecurityKind::Repo},
        KnownSecurity{"Rights", sh, "700000", "", SecurityKind::Other},
        KnownSecurity{"Unknown", sh, "999999", "", SecurityKind::MainShare}),
    ByName());

TEST(SecurityKindLot, IsThatOfOrders)
{
    const auto day = TradingDate::of(2026, 11, 2).value();
    for (const auto &[market, code, lot] :
         {std::tuple(sh, "600519", 100), std::tuple(sh, "688981", 100), std::tuple(sz, "300023", 100),
          std::tuple(Market::Beijing, "920002", 100), std::tuple(sh, "900901", 100),
          std::tuple(sz, "200002", 100), std::tuple(sh, "510300", 100), std::tuple(sh, "588000", 100),
          std::tuple(sh, "019547", 10), std::tuple(sh, "113050", 10), std::tuple(sz, "128136", 10),
          std::tuple(sh, "204001", 10), std::tuple(sz, "131810", 10)}) {
        const SecurityId security{QLatin1String(code), market};
        EXPECT_EQ(lotOf(kindOf(security)), lot) << code;
        EXPECT_EQ(MarketRules::of(security, day).lot(), lot) << code;
    }
}

} // namespace
} // namespace Trading
