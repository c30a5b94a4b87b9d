#include "tradechartobject/common/TradeVocabulary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>

using namespace TradeChart;

namespace {

TEST(TradeVocabularyRounding, RoundsAsDecimalFormattingDoes)
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

TEST(TradeVocabularyRounding, RoundsOddNumbersAsPrinted)
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

TEST(TradeVocabularyRounding, RoundsPricesAndTheirNeighboursAsPrinted)
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

TEST(TradeVocabularyRounding, RoundsNumbersOfEveryMagnitudeAsPrinted)
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

TEST(TradeVocabularyRounding, LeavesWhatIsNoNumberWhenRounding)
{
    EXPECT_TRUE(std::isnan(TradeChart::round<double>(std::numeric_limits<double>::quiet_NaN(), 3)));
    EXPECT_EQ(TradeChart::round<double>(std::numeric_limits<double>::infinity(), 3),
              std::numeric_limits<double>::infinity());
}

} // namespace
