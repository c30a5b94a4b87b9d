#include "trading/CsvLine.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

TEST(CsvLine, PutsCommasBetweenCells)
{
    EXPECT_EQ(csvLine({QStringLiteral("600519"), QString(), QStringLiteral("-1.50")}),
              QStringLiteral("600519,,-1.50\n"));
}

TEST(CsvLine, QuotesWhatWouldEndACellOrALine)
{
    EXPECT_EQ(csvLine({QStringLiteral("a \"b\", c"), QStringLiteral("d\ne")}),
              QStringLiteral("\"a \"\"b\"\", c\",\"d\ne\"\n"));
}

} // namespace
} // namespace Trading
