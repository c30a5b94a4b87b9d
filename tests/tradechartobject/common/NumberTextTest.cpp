#include "tradechartobject/common/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

void expectAsQtReads(const QString &text)
{
    EXPECT_EQ(TradeChart::toInt(TradeChart::FieldText(text)), text.toInt()) << text.toStdString();
    const double expected = text.toDouble();
    const double read = TradeChart::toDouble(TradeChart::FieldText(text));
    EXPECT_TRUE(read == expected || (std::isnan(read) && std::isnan(expected)))
        << text.toStdString() << ": " << read << " instead of " << expected;
}

TEST(NumberText, IsReadAsQtReadsIt)
{
    for (const char *text : {"",
                             "0",
                             "7",
                             "007",
                             "20240102",
                             "09301500",
                             "999999999",
                             "1000000000",
                             "2147483647",
                             "2147483648",
                             "-5",
                             "+5",
                             " 5",
                             "5 ",
                             "5x",
                             "0x10",
                             "1,000",
                             "1e3",
                             "10.",
                             ".5",
                             ".",
                             "1.2.3",
                             "10.500",
                             "0.001",
                             "1.001",
                             "12345678901234.5",
                             "123456789012345",
                             "1234567890123456",
                             "0.000000000000001",
                             "1e308",
                             "1e999",
                             "nan",
                             "inf",
                             "-inf",
                             "12.5-",
                             "１２"}) {
        expectAsQtReads(QString::fromUtf8(text));
    }
}

TEST(NumberText, IsReadAsQtReadsItForManyPrices)
{
    std::mt19937_64 random(20240102);
    std::uniform_int_distribution<int> digit(0, 9);
    std::uniform_int_distribution<int> length(1, 17);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        const int digits = length(random);
        const int point = length(random);
        for (int i = 0; i < digits; ++i) {
            if (i == point) {
                text += QLatin1Char('.');
            }
            text += QLatin1Char(static_cast<char>('0' + digit(random)));
        }
        expectAsQtReads(text);
    }
}

} // namespace
