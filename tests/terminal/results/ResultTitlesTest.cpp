#include "terminal/results/ResultTitles.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

using Trading::ResultField;

QString shown(ResultField field, const char *text)
{
    return shownCell(field, QLatin1String(text));
}

TEST(ResultTitles, AreThereForEachColumnAndList)
{
    for (int field = 0; field <= static_cast<int>(ResultField::Method); ++field) {
        EXPECT_FALSE(titleOf(static_cast<ResultField>(field)).isEmpty()) << field;
    }
    for (const Trading::ResultGroup group : Trading::resultGroups()) {
        EXPECT_FALSE(titleOf(group).isEmpty());
    }
}

TEST(ResultTitles, PutCommasIntoAmountsAndNothingElse)
{
    EXPECT_EQ(shown(ResultField::Amount, "1234567.50"), QStringLiteral("1,234,567.50"));
    EXPECT_EQ(shown(ResultField::Amount, "-1234.5678"), QStringLiteral("-1,234.5678"));
    EXPECT_EQ(shown(ResultField::Amount, "-123.00"), QStringLiteral("-123.00"));
    EXPECT_EQ(shown(ResultField::Quantity, "12300"), QStringLiteral("12,300"));
    EXPECT_EQ(shown(ResultField::Code, "600519"), QStringLiteral("600519"));
    EXPECT_EQ(shown(ResultField::Price, "1700.00"), QStringLiteral("1700.00"));
}

TEST(ResultTitles, PutASignBeforeWhatWasEarned)
{
    EXPECT_EQ(shown(ResultField::Profit, "347629.53"), QStringLiteral("+347,629.53"));
    EXPECT_EQ(shown(ResultField::Profit, "-5.00"), QStringLiteral("-5.00"));
    EXPECT_EQ(shown(ResultField::Profit, "0.00"), QStringLiteral("0.00"));
    EXPECT_EQ(shown(ResultField::Percent, "4.05"), QStringLiteral("+4.05"));
    EXPECT_EQ(shown(ResultField::Percent, ""), QString());
    EXPECT_EQ(shown(ResultField::Dividends, "10.00"), QStringLiteral("10.00"));
}

} // namespace
} // namespace Terminal
