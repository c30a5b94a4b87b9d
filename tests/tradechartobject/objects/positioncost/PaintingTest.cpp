#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

#include <cfloat>

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

class PositionCostPainting : public PositionCostTest
{
};

TEST_F(PositionCostPainting, DrawsOverAsManyBarsAsTheChartHasNow)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shanghai, std::vector<Korvane::AnalyData>(100, makeDayBar(20240102)), Korvane::DayPeriod);
    paint();
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_THAT(painter.calls[0].values, AllOf(SizeIs(100), Each(50.0)));
    EXPECT_THAT(painter.calls[1].values, AllOf(SizeIs(100), Each(50.0)));
    calc(shanghai, {}, Korvane::DayPeriod);
    paint();
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
    calc(shanghai, threeDays, Korvane::DayPeriod);
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostPainting, DrawsALineOverAllBarsThenItsLabelThenEnds)
{
    createOnShanghai();
    hearCost(QStringLiteral("50.1236"));
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(painter.calls[0].values, ElementsAre(50.1236, 50.1236, 50.1236));
    EXPECT_THAT(painter.calls[0].ints, ElementsAre(0));
    EXPECT_EQ(painter.calls[0].number, 1.0);
    EXPECT_EQ(painter.calls[1].kind, FakePainter::Call::SeriesLabel);
    EXPECT_THAT(painter.calls[1].values, ElementsAre(50.1236, 50.1236, 50.1236));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:50.124");
    EXPECT_THAT(painter.calls[1].ints, ElementsAre(-1));
    EXPECT_EQ(painter.calls[2].kind, FakePainter::Call::EndPaint);
}

TEST_F(PositionCostPainting, CutsTheLabelOfAnAbsurdCostTo127Bytes)
{
    axis.high = DBL_MAX;
    createOnShanghai();
    hearCost(QStringLiteral("1e300"));
    paint();
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[1].text.size(), 127);
    EXPECT_TRUE(painter.calls[1].text.startsWith("持仓成本:1000000000000000052504760255204420248704468581"));
}

struct ScaleCase
{
    const char *name;
    double low;
    double high;
    bool drawn;
};

class PositionCostPaintingScale : public PositionCostTest, public ::testing::WithParamInterface<ScaleCase>
{
};

TEST_P(PositionCostPaintingScale, DecidesWhetherACostOfFiftyIsDrawn)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.low = GetParam().low;
    axis.high = GetParam().high;
    EXPECT_EQ(drawnCost().has_value(), GetParam().drawn);
    EXPECT_EQ(painter.calls.back().kind, FakePainter::Call::EndPaint);
}

INSTANTIATE_TEST_SUITE_P(Ranges, PositionCostPaintingScale,
                         ::testing::Values(ScaleCase{"Inside", 49, 51, true},
                                           ScaleCase{"ExactlyLow", 50, 51, true},
                                           ScaleCase{"ExactlyHigh", 49, 50, true},
                                           ScaleCase{"JustBelow", 50.0000001, 51, false},
                                           ScaleCase{"JustAbove", 49, 49.9999999, false}),
                         ByName());

TEST_F(PositionCostPainting, OnlyEndsThePaintWithoutAPriceScale)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.hasPriceScale = false;
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
}

TEST_F(PositionCostPainting, OnlyEndsThePaintWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, Korvane::DayPeriod));
    EXPECT_TRUE(timer()->isActive());
    hearCost(QStringLiteral("50"));
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(1));
}

TEST_F(PositionCostPainting, OnlyEndsThePaintBeforeAnAnswer)
{
    createOnShanghai();
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(1));
}

TEST_F(PositionCostPainting, IsDrawnOnMinutes)
{
    create();
    calc(shanghai, {makeMinuteBar(20240102, 930), makeMinuteBar(20240102, 931)}, Korvane::IntradayPeriod);
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostPainting, DrawsACostOfWordsOnlyWhereZeroIsVisible)
{
    createOnShanghai();
    hearCost(QStringLiteral("none"));
    EXPECT_EQ(drawnCost(), 0.0);
    axis.low = 1.0;
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(PositionCostPainting, DrawsTheCostBelowZeroOfAHoldingThatHasMoreThanPaidForItself)
{
    axis.low = -10.0;
    createOnShanghai();
    hearCost(QStringLiteral("-3.5"));
    EXPECT_EQ(drawnCost(), -3.5);
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:-3.500");
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(-3.5)), 0);
}

TEST_F(PositionCostPainting, IsDrawnOnAPeriodOfNeitherKind)
{
    create();
    calc(shanghai, threeDays, 8);
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostPainting, TakesImpossibleBarsAsNone)
{
    create();
    EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -1, Korvane::DayPeriod, 0, 0));
    EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 3, Korvane::DayPeriod, 0, 0));
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(PositionCostPainting, NeverWidensThePriceScale)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_FALSE(overlay->calcRatio(1, 2));
}

} // namespace
