#include "tests/support/TimeZone.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <gmock/gmock.h>

#include <QDate>
#include <QFile>
#include <QRegularExpression>
#include <QString>

#include <cmath>
#include <cstring>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>

using namespace TradeChart;

namespace {

struct Word
{
    const char *constant;
    const char *const *value;
    const char *text;
};

#define WORD(group, name, text)                                                                              \
    Word                                                                                                     \
    {                                                                                                        \
#        group "::" #        name, &group::name, text                                                        \
    }

// What travels on the bus, written out a second time: a slip of the pen in the code is not repeated here.
const Word words[] = {
    WORD(Topic, TRADENOTIFY, "TradeNotify"),
    WORD(Topic, TRADEQUERY, "TradeQuery"),
    WORD(Topic, ENTRUSTQUERY, "EntrustQuery"),
    WORD(CmdType, HISTORYTRADE, "HistoryTrade"),
    WORD(CmdType, TODAYTRADE, "TodayTrade"),
    WORD(CmdType, HOLDERCOSTPRICE, "HolderCostPrice"),
    WORD(CmdType, ENTRUSTTODAYTRADE, "EntrustTodayTrade"),
    WORD(CmdType, ENTRUSTHISTORYTRADE, "EntrustHistoryTrade"),
    WORD(CmdType, ENTRUSTCANCEL, "EntrustCancel"),
    WORD(TradeKeyFields, ALGORITHMTYPE, "type"),
    WORD(TradeKeyFields, AUTOREFRESHTIME, "auto_refresh_time"),
    WORD(TradeKeyFields, PARAM, "param"),
    WORD(TradeKeyFields, CMD, "cmd"),
    WORD(TradeKeyFields, SCREENID, "screenId"),
    WORD(TradeKeyFields, STKCODE, "stkcode"),
    WORD(TradeKeyFields, DATA, "data"),
    WORD(TradeKeyFields, MARKET, "market"),
    WORD(TradeKeyFields, OBJECTID, "objectId"),
    WORD(TradeKeyFields, START, "start"),
    WORD(TradeKeyFields, END, "end"),
    WORD(TradeKeyFields, BUY, "buy"),
    WORD(TradeKeyFields, DATE, "date"),
    WORD(TradeKeyFields, PRICE, "price"),
    WORD(TradeKeyFields, VOL, "vol"),
    WORD(TradeKeyFields, COSTPRICE, "costprice"),
    WORD(TradeKeyFields, STKNAME, "stkname"),
    WORD(TradeKeyFields, RTSBSFLAG, "bsflag2"),
    WORD(TradeKeyFields, RTSMATCHTIME, "matchtime"),
    WORD(TradeKeyFields, RTSMATCHPRICE, "matchprice"),
    WORD(TradeKeyFields, RTSMATCHQTY, "matchqty"),
    WORD(TradeKeyFields, RTSMATCHAMT, "matchamt"),
    WORD(TradeKeyFields, RTSDATE, "bizdate"),
    WORD(TradeKeyFields, RTSORDERNO, "ordersno"),
    WORD(TradeKeyFields, RTSORDERDATE, "orderdate"),
    WORD(TradeKeyFields, RTSORDERSTATUS, "orderstatus"),
    WORD(TradeKeyFields, RTSCANCELQTY, "cancelqty"),
    WORD(TradeKeyFields, RTSCANCELFLAG, "cancelflag"),
    WORD(TradeKeyFields, RTSENTRUSTPRICE, "orderprice"),
    WORD(TradeKeyFields, RTSENTRUSTQTY, "orderqty"),
    WORD(TradeKeyFields, RTSFUNDID, "fundid"),
    WORD(TradeKeyFields, RTSENTRUSTTIME, "opertime"),
    WORD(TradeKeyFields, RTSENTRUSTDATE, "operdate"),
    WORD(TradeKeyFields, ERRCODE, "errcode"),
    WORD(TradeKeyFields, SUCCESS, "success"),
    WORD(TradeKeyFields, MSG, "msg"),
    WORD(TradeKeyFields, MSGOK, "msgok "),
    WORD(BSFlag, BUY, "B"),
    WORD(BSFlag, SELL, "S"),
    WORD(OrderStatus, None, "0"),
    WORD(OrderStatus, Quoting, "1"),
    WORD(OrderStatus, Quoted, "2"),
    WORD(OrderStatus, QuotedWaittingCancel, "3"),
    WORD(OrderStatus, PartDealWaittingCancel, "4"),
    WORD(OrderStatus, PartCanceled, "5"),
    WORD(OrderStatus, Canceled, "6"),
    WORD(OrderStatus, PartDeal, "7"),
    WORD(OrderStatus, Dealed, "8"),
    WORD(OrderStatus, AbolishedOrder, "9"),
    WORD(OrderStatus, WaittingQuote, "A"),
    WORD(OrderStatus, QuotingB, "B"),
    WORD(OrderStatus, Conformed, "G"),
};

void PrintTo(const Word &word, std::ostream *out)
{
    *out << word.constant;
}

class VocabularyWord : public ::testing::TestWithParam<Word>
{
};

TEST_P(VocabularyWord, IsSpelledAsTheTradingModuleSpellsIt)
{
    EXPECT_STREQ(*GetParam().value, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Words, VocabularyWord, ::testing::ValuesIn(words), [](const auto &row) {
    return QString::fromLatin1(row.param.constant).remove(QStringLiteral("::")).toStdString();
});

TEST(TradeVocabulary, IsListedWholeInItsPage)
{
    QFile page(QStringLiteral(TRADECHART_SOURCE_DIR "/docs/vocabulary.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    std::vector<std::string> listed;
    const QRegularExpression row(QStringLiteral("^\\| `(\\w+::\\w+)` \\| \"([^\"]*)\" \\|"),
                                 QRegularExpression::MultilineOption);
    for (auto rows = row.globalMatch(QString::fromUtf8(page.readAll())); rows.hasNext();) {
        const QRegularExpressionMatch match = rows.next();
        listed.push_back((match.captured(1) + QLatin1Char('=') + match.captured(2)).toStdString());
    }
    std::vector<std::string> known;
    for (const Word &word : words) {
        known.push_back(std::string(word.constant) + '=' + *word.value);
    }
    EXPECT_THAT(listed, ::testing::ElementsAreArray(known));
}

struct StatusText
{
    const char *code;
    const char *text;
};

class StatusTextOf : public ::testing::TestWithParam<StatusText>
{
};

TEST_P(StatusTextOf, IsShownForTheCode)
{
    EXPECT_STREQ(OrderStatus::getOrderStatusTxt(QLatin1String(GetParam().code)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, StatusTextOf,
    ::testing::Values(StatusText{"0", "未报"}, StatusText{"1", "正报"}, StatusText{"2", "已报"},
                      StatusText{"3", "已报待撤"}, StatusText{"4", "部成待撤"}, StatusText{"5", "部撤"},
                      StatusText{"6", "已撤"}, StatusText{"7", "部成"}, StatusText{"8", "已成"},
                      StatusText{"9", "废单"}, StatusText{"A", "待报"}, StatusText{"a", "待报"},
                      StatusText{"B", "正报"}, StatusText{"b", "正报"}, StatusText{"G", "已确认"},
                      StatusText{"g", "已确认"}, StatusText{"C", nullptr}, StatusText{"", nullptr},
                      StatusText{"00", nullptr}, StatusText{" 0", nullptr}));

struct Market
{
    short number;
    const char *code;
};

class MarketIdOf : public ::testing::TestWithParam<Market>
{
};

TEST_P(MarketIdOf, IsTheTradingModulesCode)
{
    EXPECT_EQ(getMarketId(GetParam().number), QLatin1String(GetParam().code));
}

INSTANTIATE_TEST_SUITE_P(Numbers, MarketIdOf,
                         ::testing::Values(Market{0, "SZ"}, Market{1, "SH"}, Market{2, "HK"}, Market{3, "SF"},
                                           Market{4, "SC"}, Market{5, "DC"}, Market{6, "ZC"}, Market{7, "BH"},
                                           Market{8, "SJ"}, Market{9, "LDJ"}, Market{10, "TJ"},
                                           Market{11, "WH"}, Market{24, "OIL"}, Market{12, ""},
                                           Market{23, ""}, Market{25, ""}, Market{-1, ""}, Market{32767, ""},
                                           Market{-32768, ""}));

TEST(TradeVocabulary, HasNoMarketCodeForAnyOtherNumber)
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

class SideOf : public ::testing::TestWithParam<SideCode>
{
};

TEST_P(SideOf, IsTakenFromTheDirectionCode)
{
    EXPECT_EQ(::toBsFlag(QLatin1String(GetParam().code)), QLatin1String(GetParam().side));
}

INSTANTIATE_TEST_SUITE_P(BuyCodes, SideOf,
                         ::testing::Values(SideCode{"0B", "B"}, SideCode{"0b", "B"}, SideCode{"0c", "B"},
                                           SideCode{"0d", "B"}, SideCode{"0e", "B"}, SideCode{"0a", "B"},
                                           SideCode{"0q", "B"}, SideCode{"0w", "B"}, SideCode{"0y", "B"},
                                           SideCode{"0.", "B"}, SideCode{"0l", "B"}));
INSTANTIATE_TEST_SUITE_P(SellCodes, SideOf,
                         ::testing::Values(SideCode{"0S", "S"}, SideCode{"0g", "S"}, SideCode{"0h", "S"},
                                           SideCode{"0i", "S"}, SideCode{"0j", "S"}, SideCode{"0r", "S"},
                                           SideCode{"0v", "S"}, SideCode{"0x", "S"}, SideCode{"0z", "S"},
                                           SideCode{"0`", "S"}, SideCode{"0m", "S"}, SideCode{"0o", "S"},
                                           SideCode{"0f", "S"}));
INSTANTIATE_TEST_SUITE_P(NoCodes, SideOf,
                         ::testing::Values(SideCode{"B", ""}, SideCode{"S", ""}, SideCode{"", ""},
                                           SideCode{"0B ", ""}, SideCode{"0s", ""}, SideCode{"0F", ""},
                                           SideCode{"0C", ""}, SideCode{"1B", ""}, SideCode{"0", ""}));

TEST(TradeVocabulary, GivesTodaysLocalDate)
{
    const auto before = currentDate();
    const QDate today = QDate::currentDate();
    const auto after = currentDate();
    const std::int64_t expected = today.toString(QStringLiteral("yyyyMMdd")).toLongLong();
    EXPECT_TRUE(expected == before || expected == after); // midnight may fall between the calls
}

TEST(TradeVocabulary, CountsDaysWhereTheUserIs)
{
    TimeZone zone(easternmostZone);
    const auto east = currentDate();
    zone.set(westernmostZone);
    const auto west = currentDate();
    EXPECT_GT(east, west);
}

TEST(TradeVocabulary, RoundsAsDecimalFormattingDoes)
{
    EXPECT_EQ(TradeChart::round<double>(1.23456, 3), 1.235);
    EXPECT_EQ(TradeChart::round<double>(7.0, 0), 7.0);
    EXPECT_EQ(TradeChart::round<double>(10.1226, 3), 10.123);
    EXPECT_EQ(TradeChart::round<double>(-1.0005, 3), std::stod("-1.000"))
        << "the stored value is just above -1.0005";
    EXPECT_EQ(TradeChart::round<double>(2.5, 0), 2.0) << "decimal formatting rounds a tie to even";
    EXPECT_EQ(TradeChart::round<double>(1.005, 2), 1.0) << "the stored value is just below 1.005";
    EXPECT_EQ(TradeChart::round<double>(0.1, 4000000000U), 0.1) << "no double has so many decimals";
}

std::uint64_t bitsOf(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// To the last bit: the sign of zero counts, too.
void expectRoundsAsPrinted(double value, unsigned int digits)
{
    std::stringstream text;
    text << std::fixed << std::setprecision(static_cast<int>(digits)) << value;
    double printed = 0.0;
    text >> printed;
    const double rounded = TradeChart::round<double>(value, digits);
    EXPECT_EQ(bitsOf(rounded), bitsOf(printed))
        << std::setprecision(20) << value << " to " << digits << " decimals: " << rounded;
}

void expectRoundsAsPrinted(double value)
{
    for (const unsigned int digits : {0U, 1U, 2U, 3U, 5U, 8U, 15U, 16U, 40U}) {
        expectRoundsAsPrinted(value, digits);
    }
}

TEST(TradeVocabulary, RoundsOddNumbersAsPrinted)
{
    const double largest = std::numeric_limits<double>::max();
    const double smallest = std::numeric_limits<double>::denorm_min();
    for (const double value : {0.0,
                               smallest,
                               1e-300,
                               4.9e-4,
                               5e-4,
                               0.5,
                               1.5,
                               2.5,
                               0.125,
                               0.0625,
                               1.0005,
                               999.9995,
                               2251799813685247.5,
                               4503599627370495.5,
                               4503599627370496.0,
                               9007199254740993.0,
                               4503599627370.4955,
                               1e15,
                               1e16,
                               1e22,
                               1e23,
                               1e300,
                               largest}) {
        for (const double near : {value, std::nextafter(value, 0.0), std::nextafter(value, largest)}) {
            expectRoundsAsPrinted(near);
            expectRoundsAsPrinted(-near);
        }
    }
}

TEST(TradeVocabulary, RoundsPricesAndTheirNeighboursAsPrinted)
{
    std::mt19937_64 random(20240102);
    std::uniform_int_distribution<std::int64_t> thousandths(0, 5000000);
    for (int round = 0; round < 20000; ++round) {
        const double price = static_cast<double>(thousandths(random)) / 1000.0;
        const double halfWay = price + 0.0005;
        for (const double value :
             {price, halfWay, std::nextafter(halfWay, 0.0), std::nextafter(halfWay, 1e9)}) {
            expectRoundsAsPrinted(value, 3);
            expectRoundsAsPrinted(-value, 2);
        }
    }
}

TEST(TradeVocabulary, RoundsNumbersOfEveryMagnitudeAsPrinted)
{
    std::mt19937_64 random(20240103);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-80, 80);
    for (int round = 0; round < 5000; ++round) {
        expectRoundsAsPrinted(std::ldexp(mantissa(random), exponent(random)));
        // few bits: such a number often lies just half-way
        expectRoundsAsPrinted(std::ldexp(std::trunc(mantissa(random) * 4096.0), exponent(random) / 4));
    }
}

TEST(TradeVocabulary, LeavesWhatIsNoNumberWhenRounding)
{
    EXPECT_TRUE(std::isnan(TradeChart::round<double>(std::numeric_limits<double>::quiet_NaN(), 3)));
    EXPECT_EQ(TradeChart::round<double>(std::numeric_limits<double>::infinity(), 3),
              std::numeric_limits<double>::infinity());
}

} // namespace
