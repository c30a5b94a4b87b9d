#include "terminal/data/BarStamp.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

struct Stamp
{
    const char *name;
    const char *cell;
    int date;   ///< 0 for none
    int minute; ///< -1 for none
};

class BarStampInACell : public ::testing::TestWithParam<Stamp>
{
};

TEST_P(BarStampInACell, IsRead)
{
    const auto form = BarStampForm::of(GetParam().cell);
    ASSERT_TRUE(form.has_value());
    const auto stamp = form->read(GetParam().cell);
    ASSERT_TRUE(stamp.has_value());
    EXPECT_EQ(stamp->date ? stamp->date->number() : 0, GetParam().date);
    EXPECT_EQ(stamp->minute.value_or(-1), GetParam().minute);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, BarStampInACell,
    ::testing::Values(Stamp{"digits", "20240131", 20240131, -1}, Stamp{"iso", "2024-01-31", 20240131, -1},
                      Stamp{"shortParts", "2024/1/2", 20240102, -1},
                      Stamp{"points", "2024.01.31", 20240131, -1},
                      Stamp{"chinese", "2024年1月31日", 20240131, -1}, Stamp{"threeDigits", "931", 0, 571},
                      Stamp{"fourDigits", "1500", 0, 900}, Stamp{"fiveDigits", "93100", 0, 571},
                      Stamp{"sixDigits", "150000", 0, 900}, Stamp{"colon", "9:31", 0, 571},
                      Stamp{"seconds", "09:31:00", 0, 571},
                      Stamp{"both", "2024-01-31 09:31:00", 20240131, 571},
                      Stamp{"letterT", "2024-01-31T09:31:00", 20240131, 571},
                      Stamp{"thousandths", "2024-01-31 09:31:00.000", 20240131, 571},
                      Stamp{"zone", "2024-01-31 09:31:00+08:00", 20240131, 571},
                      Stamp{"digitsOfBoth", "202401310931", 20240131, 571},
                      Stamp{"digitsWithThousandths", "20240131093100000", 20240131, 571},
                      Stamp{"digitsAndColon", "20240131 09:31", 20240131, 571}),
    ByName());

TEST(BarStamp, IsNothingElse)
{
    for (const char *const cell :
         {"", "x", "240131", "31/01/2024", "01-31-2024", "2024-13-01", "2024-02-30", "00240131", "45293.5",
          "2460", "2024-01-31 09:31:00+00:00", "2024-01-31 09:31:00Z", "1704153600000", "20240131 25:00"}) {
        const auto form = BarStampForm::of(cell);
        EXPECT_FALSE(form && form->hasDate()) << cell;
    }
}

TEST(BarStamp, IsNoDayWithAnHourAlone)
{
    EXPECT_FALSE(BarStampForm::of("20240131 09").has_value());
    EXPECT_FALSE(BarStampForm::of("20240131 9").has_value());
}

TEST(BarStamp, HasOneForm)
{
    const auto form = BarStampForm::of("20240131");
    EXPECT_TRUE(form->read("20240201"));
    EXPECT_FALSE(form->read("2024-02-01"));
    EXPECT_FALSE(form->read("20240230"));
    EXPECT_EQ(form->shown(), QStringLiteral("yyyymmdd"));
}

} // namespace
} // namespace Terminal
