#include "terminal/chart/axes/PriceTicks.h"
#include "terminal/chart/text/FigureText.h"

#include <gmock/gmock.h>

#include <QSet>

namespace Terminal {
namespace {

constexpr double paneHeight = 600;

TEST(PriceTicks, AreRoundAndInsideTheScale)
{
    EXPECT_THAT(priceTicks({9.7, 20.4}, 400), ::testing::ElementsAre(10, 12, 14, 16, 18, 20));
}

TEST(PriceTicks, LeaveOutWhatWouldBeCutAtTheEdges)
{
    EXPECT_THAT(priceTicks({10, 20}, 400), ::testing::ElementsAre(12, 14, 16, 18));
}

} // namespace
} // namespace Terminal
