#include "trademodule/import/CellValue.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

namespace TradeModule {

namespace {

struct Cell
{
    std::string name;
    std::string text;
    double value; ///< NaN for what cannot be read

    friend std::ostream &operator<<(std::ostream &stream, const Cell &cell) { return stream << cell.text; }
};

const double unreadable = std::nan("");

double valueOr(const std::optional<double> &value)
{
    return value.value_or(unreadable);
}

/// Of a date or a time.
template <typename Value>
double numberOr(const std::optional<Value> &value)
{
    return value ? value->number() : unreadable;
}

void expectSame(double read, double expected)
{
    EXPECT_TRUE(read == expected || (std::isnan(read) && std::isnan(expected)))
        << read << " instead of " << expected;
}

class CellValueOfANumber : public ::testing::TestWithParam<Cell>
{
};
class CellValueOfADate : public ::testing::TestWithParam<Cell>
{
};
class CellValueOfATime : public ::testing::TestWithParam<Cell>
{
};

} // namespace

TEST_P(CellValueOfANumber, Reads)
{
    expectSame(valueOr(CellValue::number(QString::fromStdString(GetParam().text))), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    As, CellValueOfANumber,
    ::testing::Values(Cell{"Plain", "12.5", 12.5}, Cell{"Thousands", "1,234,567.8", 1234567.8},
                      Cell{"FullWidth", "１，２３４．５", 1234.5}, Cell{"FullWidthMinus", "－12.5", -12.5},
                      Cell{"MathMinus", "−12.5", -12.5}, Cell{"Yuan", "￥12.50", 12.5},
                      Cell{"Brackets", "(12.50)", -12.5}, Cell{"NoLeadingZero", ".62", 0.62},
                      Cell{"Noise", "26.783000000000001", 26.783000000000001}, Cell{"Empty", "", 0.0},
                      Cell{"TwoDashes", "--", 0.0}, Cell{"ThreeDashes", "---", 0.0},
                      Cell{"Wrapped", "=\"100\"", 100.0}, Cell{"Quoted", "\"1,000\"", 1000.0},
                      Cell{"Blanks", " 100 \t", 100.0}, Cell{"Plus", "+3", 3.0},
                      Cell{"Word", "abc", unreadable}, Cell{"NotANumber", "nan", unreadable},
                      Cell{"Infinite", "inf", unreadable}),
    ByName());

TEST_P(CellValueOfADate, Reads)
{
    expectSame(numberOr(CellValue::date(QString::fromStdString(GetParam().text))), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    As, CellValueOfADate,
    ::testing::Values(Cell{"Digits", "20210811", 20210811}, Cell{"Dashes", "2021-08-11", 20210811},
                      Cell{"Slashes", "2021/8/11", 20210811}, Cell{"Dots", "2021.08.11", 20210811},
                      Cell{"Chinese", "2021年8月11日", 20210811}, Cell{"Spreadsheet", "42654", 20161011},
                      Cell{"WithRunningNumber", "20210811000123", 20210811},
                      Cell{"WithTime", "2021-08-11 10:30:00", 20210811},
                      Cell{"Wrapped", "=\"20210811\"", 20210811}, Cell{"NoSuchDay", "20210229", unreadable},
                      Cell{"Short", "2021081", unreadable}, Cell{"Empty", "", unreadable},
                      Cell{"Word", "合计", unreadable}),
    ByName());

TEST_P(CellValueOfATime, Reads)
{
    expectSame(numberOr(CellValue::time(QString::fromStdString(GetParam().text))), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    As, CellValueOfATime,
    ::testing::Values(Cell{"Digits", "110351", 11035100}, Cell{"Colons", "11:03:51", 11035100},
                      Cell{"Minutes", "1103", 11030000}, Cell{"MinutesColon", "11:03", 11030000},
                      Cell{"FiveDigits", "93551", 9355100}, Cell{"OneDigitHour", "9:43:41", 9434100},
                      Cell{"Hundredths", "11035199", 11035199}, Cell{"Fraction", "11:03:51.25", 11035125},
                      Cell{"OfADay", "0.39900", 9343400}, Cell{"Empty", "", 0}, Cell{"Zero", "0", 0},
                      Cell{"WithDate", "2021-08-11 10:30:00", 10300000},
                      Cell{"NoSuchHour", "25:00:00", unreadable}, Cell{"NoSuchMinute", "106151", unreadable},
                      Cell{"Word", "上午", unreadable}),
    ByName());

TEST(CellValueOfACode, HasItsDigitsAsTheyStand)
{
    EXPECT_EQ(CellValue::code(QStringLiteral("2798"))->digits, QStringLiteral("2798"));
}

TEST(CellValueOfACode, MayCarryItsMarket)
{
    EXPECT_EQ(CellValue::code(QStringLiteral("sh600000"))->market, QStringLiteral("SH"));
    EXPECT_EQ(CellValue::code(QStringLiteral("000001.SZ "))->digits, QStringLiteral("000001"));
    EXPECT_EQ(CellValue::code(QStringLiteral("00700.HK"))->digits, QStringLiteral("00700"));
}

} // namespace TradeModule
