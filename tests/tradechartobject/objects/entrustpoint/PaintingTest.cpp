#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <cfloat>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class EntrustPointPainting : public EntrustPointTest
{
};

TEST_F(EntrustPointPainting, NeverWidensThePriceScale)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1e6"}});
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_TRUE(overlay->calcRatio(1, 2));
}

TEST_F(EntrustPointPainting, PaintsNothingWithoutMarkersOrWithoutAScale)
{
    createOnThreeMinutes();
    EXPECT_FALSE(paint());
    hearOrders({SentOrder()});
    axis.hasPriceScale = false;
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
}

struct Clamped
{
    const char *name;
    const char *price;
    const char *drawn;
    double top;    ///< of the pixels that are caught
    double bottom; ///< included
};

class EntrustPointPaintingClamped : public EntrustPointTest, public ::testing::WithParamInterface<Clamped>
{
protected:
    void SetUp() override
    {
        axis.low = 9.0;
        axis.high = 11.0;
        axis.pixelsPerUnit = 100.0;
        createOnThreeMinutes();
        hearOrders({SentOrder{"0B", "2", GetParam().price}});
    }
};

TEST_P(EntrustPointPaintingClamped, IsDrawnInsideTheVisibleRange)
{
    EXPECT_THAT(drawn(), ElementsAre(GetParam().drawn));
}

TEST_P(EntrustPointPaintingClamped, IsHitFromTopToBottom)
{
    EXPECT_EQ(overlay->hitTest(0, GetParam().top), 0);
    EXPECT_EQ(overlay->hitTest(0, GetParam().bottom), 0);
    EXPECT_EQ(overlay->hitTest(0, GetParam().top - 0.01), -1);
    EXPECT_EQ(overlay->hitTest(0, GetParam().bottom + 0.01), -1);
}

TEST_P(EntrustPointPaintingClamped, IsClickedFromTopToBottom)
{
    EXPECT_THAT(listAt(0, GetParam().top), SizeIs(1));
    EXPECT_THAT(listAt(0, GetParam().bottom), SizeIs(1));
    EXPECT_THAT(listAt(0, GetParam().top - 0.01), IsEmpty());
    EXPECT_THAT(listAt(0, GetParam().bottom + 0.01), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Prices, EntrustPointPaintingClamped,
                         ::testing::Values(Clamped{"Inside", "10", "0 20 10", 100.0, 116.0},
                                           Clamped{"AtTheLow", "9", "0 20 9v", 184.0, 200.0},
                                           Clamped{"BelowTheLow", "5", "0 20 9v", 184.0, 200.0},
                                           Clamped{"AtTheHigh", "11", "0 20 11", 0.0, 16.0},
                                           Clamped{"AboveTheHigh", "500", "0 20 11", 0.0, 16.0}),
                         ByName());

TEST_F(EntrustPointPainting, HoldsAMarkerAtTheBottomOfARangeWithoutHeight)
{
    axis.low = axis.high = 10.0;
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10v"));
    EXPECT_EQ(overlay->hitTest(0, yOfTen() - 16), 0);
    EXPECT_EQ(overlay->hitTest(0, yOfTen() + 1), -1);
    EXPECT_THAT(listAt(0, yOfTen() - 16), SizeIs(1));
    EXPECT_THAT(listAt(0, yOfTen() + 1), IsEmpty());
}

} // namespace
