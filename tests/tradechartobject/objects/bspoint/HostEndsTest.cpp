#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::IsEmpty;

namespace {

class BSPointHostEnds : public BSPointTest
{
};

TEST_F(BSPointHostEnds, BelongsToTheParentItIsGiven)
{
    QObject parent;
    auto *child = new BSPoint(axis, {}, &parent);
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "the bus client has no parent";
}

TEST_F(BSPointHostEnds, HearsNothingMoreWhileItIsDestroyed)
{
    createOnThreeDays();
    bus().duringDisconnect = [] { hearHistory({{"B", "20240103", "9301500", "1", "1"}}); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(BSPointHostEnds, IsDestroyedByTheHostInsideThePopup)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onPopup = [this] {
        destroy();
        return 0;
    };
    overlay->handleMousePress(0, 0);
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointHostEnds, IsDestroyedByTheHostWhileTheHistoryQuestionGoesOut)
{
    create();
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointHostEnds, IsDestroyedByTheHostInsideARepaintAfterTodaysAnswer)
{
    createOnThreeDays();
    axis.onUpdate = [this] { destroy(); };
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointHostEnds, IsDestroyedByTheHostInsideARepaintAfterAHistoryAnswer)
{
    createOnThreeDays();
    axis.onUpdate = [this] { destroy(); };
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointHostEnds, IsEndedByTheHostInsideARepaint)
{
    createOnThreeDays();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(timer(), nullptr);
}

} // namespace
