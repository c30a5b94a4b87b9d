#include "trading/ResultColumns.h"

#include <gmock/gmock.h>

#include <QSet>

#include <algorithm>

namespace Trading {
namespace {

TEST(ResultColumns, HaveAKeyForEachFieldThatIsItsAlone)
{
    QSet<QString> keys;
    for (int field = 0; field <= static_cast<int>(ResultField::Method); ++field) {
        const ResultColumn &column = columnOf(static_cast<ResultField>(field));
        EXPECT_EQ(column.field, static_cast<ResultField>(field));
        EXPECT_FALSE(keys.contains(QLatin1String(column.key))) << column.key;
        EXPECT_EQ(findResultColumn(QLatin1String(column.key)), &column);
        keys.insert(QLatin1String(column.key));
    }
    EXPECT_EQ(findResultColumn(QStringLiteral("weather")), nullptr);
}

TEST(ResultColumns, AreOfEachGroupThatHasAWord)
{
    EXPECT_EQ(resultGroups().size(), 5U);
    for (const ResultGroup group : resultGroups()) {
        EXPECT_EQ(resultGroupOf(wordOf(group)), group);
        EXPECT_FALSE(fieldsOf(group).empty());
    }
    EXPECT_EQ(resultGroupOf(QStringLiteral("Sale")), std::nullopt);
}

/// The way to reckon costs is the same in all rows: a file has it as its last column, a list names it once.
TEST(ResultColumns, LeaveTheMethodToWhoWritesThem)
{
    for (const ResultGroup group : resultGroups()) {
        EXPECT_THAT(fieldsOf(group), ::testing::Not(::testing::Contains(ResultField::Method)));
    }
}

/// A list has a row of sums: the first cell says so, and is none itself.
TEST(ResultColumns, BeginWithOneThatHasNoSum)
{
    for (const ResultGroup group : resultGroups()) {
        EXPECT_FALSE(columnOf(fieldsOf(group).front()).isSummed) << wordOf(group).toStdString();
    }
}

} // namespace
} // namespace Trading
