#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

#include <optional>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PositionCostHostEnds : public PositionCostTest
{
};

TEST_F(PositionCostHostEnds, HearsNothingMoreWhileItIsDestroyed)
{
    createOnShanghai();
    bus().duringDisconnect = [] { hearCost(QStringLiteral("50")); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(PositionCostHostEnds, IsRecomputedAndPaintedInsideARepaintRequest)
{
    createOnShanghai();
    std::optional<double> drawn;
    axis.onUpdate = [&] {
        calc(shanghai, threeDays, Korvane::DayPeriod);
        drawn = drawnCost();
    };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawn, 50.0);
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(PositionCostHostEnds, IsEndedInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(timer(), nullptr);
}

TEST_F(PositionCostHostEnds, IsDestroyedByTheHostInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { destroy(); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(PositionCostHostEnds, IsDestroyedByTheHostWhileTheQuestionGoesOut)
{
    create();
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(PositionCostHostEnds, BelongsToTheParentItIsGiven)
{
    QObject parent;
    auto *child = new PositionCost(axis, {}, &parent);
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "the bus client has no parent";
}

} // namespace
