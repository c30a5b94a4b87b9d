#include "tradechartobject/common/TradeVocabulary.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include <cctype>
#include <cstdlib>
#include <string>

using namespace TradeChart;

namespace {

/// A code as the name of a row: a character that a name may not have stands in hexadecimal.
std::string spelled(const char *code)
{
    std::string name;
    for (const char letter : QByteArray(code)) {
        name += std::isalnum(letter) != 0 ? std::string(1, letter)
                                          : "x" + QByteArray(1, letter).toHex().toStdString();
    }
    return name.empty() ? "Empty" : name;
}

constexpr auto byCode = [](const auto &row) { return spelled(row.param.code); };

constexpr auto byNumber = [](const auto &row) {
    const int number = row.param.number;
    return (number < 0 ? "Minus" : "") + std::to_string(std::abs(number));
};

struct StatusText
{
    const char *code;
    const char *text;
};

class TradeVocabularyCodesOfStatuses : public ::testing::TestWithParam<StatusText>
{
};

TEST_P(TradeVocabularyCodesOfStatuses, IsShownForTheCode)
{
    EXPECT_STREQ(OrderStatus::getOrderStatusTxt(QLatin1String(GetParam().code)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, TradeVocabularyCodesOfStatuses,
    ::testing::Values(StatusText{"0", "未报"}, StatusText{"1", "正报"}, StatusText{"2", "已报"},
                      StatusText{"3", "已报待撤"}, StatusText{"4", "部成待撤"}, StatusText{"5", "部撤"},
                      StatusText{"6", "已撤"}, StatusText{"7", "部成"}, StatusText{"8", "已成"},
                      StatusText{"9", "废单"}, StatusText{"A", "待报"}, StatusText{"a", "待报"},
                      StatusText{"B", "正报"}, StatusText{"b", "正报"}, StatusText{"G", "已确认"},
                      StatusText{"g", "已确认"}, StatusText{"C", nullptr}, StatusText{"", nullptr},
                      StatusText{"00", nullptr}, StatusText{" 0", nullptr}),
    byCode);

struct Market
{
    short number;
    const char *code;
};

class TradeVocabularyCodesOfMarkets : public ::testing::TestWithParam<Market>
{
};

TEST_P(TradeVocabularyCodesOfMarkets, IsTheTradingModulesCode)
{
    EXPECT_EQ(getMarketId(GetParam().number), QLatin1String(GetParam().code));
}

INSTANTIATE_TEST_SUITE_P(Numbers, TradeVocabularyCodesOfMarkets,
                         ::testing::Values(Market{0, "SZ"}, Market{1, "SH"}, Market{2, "HK"}, Market{3, "SF"},
                                           Market{4, "SC"}, Market{5, "DC"}, Market{6, "ZC"}, Market{7, "BH"},
                                           Market{8, "SJ"}, Market{9, "LDJ"}, Market{10, "TJ"},
                                           Market{11, "WH"}, Market{24, "OIL"}, Market{12, ""},
                                           Market{23, ""}, Market{25, ""}, Market{-1, ""}, Market{32767, ""},
                                           Market{-32768, ""}),
                         byNumber);

TEST(TradeVocabularyCodes, HasNoMarketCodeForAnyOtherNumber)
{
    int named = 0;
    for (int number = -32768; number <= 32767; ++number) {
        named += getMarketId(static_cast<short>(number)).isEmpty() ? 0 : 1;
    }
    EXPECT_EQ(named, 13);
}

struct SideCode
{
    const char *code;
    const char *side;
};

class TradeVocabularyCodesOfSides : public ::testing::TestWithParam<SideCode>
{
};

TEST_P(TradeVocabularyCodesOfSides, IsTakenFromTheDirectionCode)
{
    EXPECT_EQ(::toBsFlag(QLatin1String(GetParam().code)), QLatin1String(GetParam().side));
}

INSTANTIATE_TEST_SUITE_P(BuyCodes, TradeVocabularyCodesOfSides,
                         ::testing::Values(SideCode{"0B", "B"}, SideCode{"0b", "B"}, SideCode{"0c", "B"},
                                           SideCode{"0d", "B"}, SideCode{"0e", "B"}, SideCode{"0a", "B"},
                                           SideCode{"0q", "B"}, SideCode{"0w", "B"}, SideCode{"0y", "B"},
                                           SideCode{"0.", "B"}, SideCode{"0l", "B"}),
                         byCode);
INSTANTIATE_TEST_SUITE_P(SellCodes, TradeVocabularyCodesOfSides,
                         ::testing::Values(SideCode{"0S", "S"}, SideCode{"0g", "S"}, SideCode{"0h", "S"},
                                           SideCode{"0i", "S"}, SideCode{"0j", "S"}, SideCode{"0r", "S"},
                                           SideCode{"0v", "S"}, SideCode{"0x", "S"}, SideCode{"0z", "S"},
                                           SideCode{"0`", "S"}, SideCode{"0m", "S"}, SideCode{"0o", "S"},
                                           SideCode{"0f", "S"}),
                         byCode);
INSTANTIATE_TEST_SUITE_P(NoCodes, TradeVocabularyCodesOfSides,
                         ::testing::Values(SideCode{"B", ""}, SideCode{"S", ""}, SideCode{"", ""},
                                           SideCode{"0B ", ""}, SideCode{"0s", ""}, SideCode{"0F", ""},
                                           SideCode{"0C", ""}, SideCode{"1B", ""}, SideCode{"0", ""}),
                         byCode);

} // namespace
