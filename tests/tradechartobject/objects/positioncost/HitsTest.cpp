#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

#include <cmath>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PositionCostHits : public PositionCostTest
{
};

TEST_F(PositionCostHits, IsHitWithinFivePixelsOfTheLine)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    const double line = axis.yOf(50);
    EXPECT_EQ(overlay->hitTest(-1000, line), 0) << "x does not matter";
    EXPECT_EQ(overlay->hitTest(0, line - 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, line + 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, line - 5.01), -1);
    EXPECT_EQ(overlay->hitTest(0, line + 5.01), -1);
}

TEST_F(PositionCostHits, IsHitWhereTheLineIsNotDrawnJustNow)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.hasPriceScale = false;
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), 0);
}

TEST_F(PositionCostHits, IsNotHitWithoutACost)
{
    createOnShanghai();
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), -1);
    EXPECT_EQ(overlay->hitTest(0, notANumber), -1);
    hearCost(QStringLiteral("50"));
    axis.pixelsPerUnit = notANumber;
    EXPECT_EQ(overlay->hitTest(0, 0), -1) << "a host without a scale";
}

TEST_F(PositionCostHits, AsksTheHostForThePixelOfAnUnknownCostToo)
{
    createOnShanghai();
    axis.pricesAsked.clear();
    EXPECT_EQ(overlay->hitTest(0, 0.0), -1);
    ASSERT_THAT(axis.pricesAsked, SizeIs(1));
    EXPECT_TRUE(std::isnan(axis.pricesAsked[0]));
    axis.pixelOf = [](double) { return 0.0; };
    EXPECT_EQ(overlay->hitTest(0, 0.0), 0) << "the host's answer decides";
}

TEST_F(PositionCostHits, IgnoresTheMouse)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.updated.clear();
    axis.hostCalls = 0;
    overlay->handleMousePress(0, axis.yOf(50));
    overlay->handleMousePressR(0, axis.yOf(50));
    overlay->handleMouseRelease(0, axis.yOf(50));
    overlay->handleMouseReleaseR(0, axis.yOf(50));
    overlay->handleMouseMove(0, axis.yOf(50));
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.questions, IsEmpty());
    EXPECT_THAT(axis.messages, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
}

} // namespace
