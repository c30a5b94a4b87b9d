#include "trademodule/import/ImportProfile.h"
#include "trademodule/Error.h"
#include "trademodule/import/ColumnNames.h"

#include <gmock/gmock.h>

namespace TradeModule {

TEST(ImportProfile, IsWrittenAsItIsRead)
{
    const QString text = QStringLiteral("column 发生日 = date\nword 撮合 = buy\n");

    EXPECT_EQ(ImportProfile::ofText(text).text(), text);
}

TEST(ImportProfile, KnowsAColumnWithTwoUnitsAlsoAfterItWasKept)
{
    const auto profile = ImportProfile::ofText(QStringLiteral("column 业务/日(北京) = date\n"));
    const auto kept = ImportProfile::ofText(profile.text());

    EXPECT_TRUE(kept.columnOf(ColumnNames::plainName(QStringLiteral("业务/日(北京)"))).has_value());
}

TEST(ImportProfile, IgnoresRemarksAndWhatSaysNothingYet)
{
    EXPECT_TRUE(ImportProfile::ofText(QStringLiteral("# made by hand\n\ncolumn 发生日 =\n")).isEmpty());
}

TEST(ImportProfile, NamesALineThatItDoesNotUnderstand)
{
    try {
        ImportProfile::ofText(QStringLiteral("column 发生日 = date\ncolumn 价 = prize\n"));
        FAIL() << "understood";
    } catch (const Error &error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("line 2"));
    }
}

TEST(ImportProfile, SuggestsWhatCanBeReadBack)
{
    const QString suggestion =
        ImportProfile::suggestion({QStringLiteral("发生日")}, {QStringLiteral("撮合")});

    EXPECT_TRUE(suggestion.contains(QStringLiteral("column 发生日 = ")));
    EXPECT_TRUE(suggestion.contains(QStringLiteral("word 撮合 = ")));
    EXPECT_TRUE(ImportProfile::ofText(suggestion).isEmpty());
}

TEST(ImportProfile, TakesTheWordOfTheOtherWhenBothSaySomething)
{
    ImportProfile profile = ImportProfile::ofText(QStringLiteral("word 撮合 = buy\n"));

    profile.add(ImportProfile::ofText(QStringLiteral("word 撮合 = sell\n")));

    EXPECT_EQ(profile.wordFor(QStringLiteral("撮合")), QStringLiteral("sell"));
}

} // namespace TradeModule
