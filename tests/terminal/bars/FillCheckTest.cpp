#include "terminal/bars/FillCheck.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Bars days = {{20240102, 0, 10, 10.5, 9.8, 10.2, 5000},
                   {20240104, 0, 10.2, 10.6, 10.1, 10.4, 6000},
                   {20240105, 0, 10.4, 10.4, 10.4, 10.4, 7000}};

std::vector<std::string> warnings(const std::vector<Fill> &fills)
{
    std::vector<std::string> texts;
    for (const QString &warning : fillWarnings(days, fills)) {
        texts.push_back(warning.toStdString());
    }
    return texts;
}

auto saying(const char *what)
{
    return ::testing::HasSubstr(what);
}

TEST(FillCheck, SaysNothingOfTradesWithinTheirDays)
{
    EXPECT_THAT(warnings({{onDay(20240102), 9.80, 5000}, {onDay(20240105), 10.404, 100}}), IsEmpty());
}

TEST(FillCheck, SaysHowManyTradesLieOnTheBars)
{
    const auto summary = [](const std::vector<Fill> &fills) {
        return fillSummary(days, fills).toStdString();
    };
    EXPECT_EQ(summary({{onDay(20231229), 99, 100}, {onDay(20240102), 9.80, 5000}}),
              "1 trades compared, all within their bars.");
    EXPECT_THAT(summary({{onDay(20231229), 99, 100}}), saying("All 1 trades of the ledger are before or"));
    EXPECT_THAT(summary({}), saying("no trades of this security"));
}

TEST(FillCheck, NamesTheFirstTradeOutsideOfItsDay)
{
    EXPECT_THAT(
        warnings(
            {{onDay(20240102), 10.00, 100}, {onDay(20240104), 20.40, 100}, {onDay(20240105), 20.80, 100}}),
        ElementsAre(saying("2 of 3 trades lie outside of their day's prices, first 2024-01-04: 20.40, but "
                           "the day had 10.10 to 10.60")));
}

TEST(FillCheck, SuspectsLotsWhereATradeIsLargerThanItsDay)
{
    EXPECT_THAT(warnings({{onDay(20240102), 10.00, 5100}}), ElementsAre(saying("5100 shares of 5000")));
}

TEST(FillCheck, SuspectsAnotherSecurityWhereADayHasNoBar)
{
    EXPECT_THAT(warnings({{onDay(20240103), 10.00, 100}}),
                ElementsAre(saying("1 trades are on days without a bar, first 2024-01-03")));
}

TEST(FillCheck, ComparesNothingBeforeAndAfterTheBars)
{
    EXPECT_THAT(warnings({{onDay(20231229), 99, 100}, {onDay(20240108), 99, 100}}), IsEmpty());
    EXPECT_THAT(fillWarnings({}, {{onDay(20240102), 10, 100}}), IsEmpty());
}

} // namespace
} // namespace Terminal
