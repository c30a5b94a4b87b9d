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

TEST(PriceTicks, HaveNoLabelTwice)
{
    for (const double height : {0.004, 0.01, 0.017, 0.03, 0.06, 0.12, 1.0}) {
        const QList<double> ticks = priceTicks({3.496, 3.496 + height}, paneHeight);
        QSet<QString> labels;
        for (const double tick : ticks) {
            labels.insert(priceText(tick));
        }
        EXPECT_EQ(labels.size(), ticks.size()) << "a scale of " << height;
    }
}

} // namespace
} // namespace Terminal
