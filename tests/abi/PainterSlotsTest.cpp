// Each operation of IChartPainter stands in the slot where terminals in the field have it: called through its
// number, it reaches the operation of that name.
#include "tests/abi/Slot.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class PainterSlots : public ::testing::Test
{
protected:
    PainterSlots() { painter.barCount = 2; }

    template <class... Arguments>
    FakePainter::Call call(int number, Arguments... arguments)
    {
        slot<void (*)(Korvane::IChartPainter *, Arguments...)>(interface, number)(&interface, arguments...);
        return painter.calls.back();
    }

    const double values[2] = {1.0, 2.0};
    FakePainter painter;
    Korvane::IChartPainter &interface = painter;
};

TEST_F(PainterSlots, FourEndsThePaint)
{
    EXPECT_EQ(call(4).kind, FakePainter::Call::EndPaint);
}

TEST_F(PainterSlots, EightDrawsALabel)
{
    const auto drawn = call<const double *, const char *, int>(8, values, "text", -1);
    EXPECT_EQ(drawn.kind, FakePainter::Call::SeriesLabel);
    EXPECT_EQ(drawn.text, "text");
    EXPECT_THAT(drawn.ints, ElementsAre(-1));
}

TEST_F(PainterSlots, ThirteenDrawsALine)
{
    const auto drawn = call<int, const double *, double>(13, 0, values, 1.5);
    EXPECT_EQ(drawn.kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(drawn.values, ElementsAre(1.0, 2.0));
    EXPECT_EQ(drawn.number, 1.5);
}

TEST_F(PainterSlots, ThirtyFiveDrawsASeriesOfMarkers)
{
    const auto drawn = call<int, const double *, const double *, int, int>(35, 0, values, values, 4, 1);
    EXPECT_EQ(drawn.kind, FakePainter::Call::MarkerSeries);
    EXPECT_THAT(drawn.ints, ElementsAre(0, 4, 1));
}

TEST_F(PainterSlots, ThirtySixDrawsOneMarker)
{
    const auto drawn = call<int, int, int, int, double>(36, 0, 5, 21, 1, 12.5);
    EXPECT_EQ(drawn.kind, FakePainter::Call::Marker);
    EXPECT_THAT(drawn.ints, ElementsAre(0, 5, 21, 1));
    EXPECT_EQ(drawn.number, 12.5);
}

} // namespace
