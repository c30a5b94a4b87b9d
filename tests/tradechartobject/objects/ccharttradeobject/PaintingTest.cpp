#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectPainting : public CChartTradeObjectTest
{
};

TEST_F(CChartTradeObjectPainting, PaintsSixSeriesOverHighsAndLowsThenEnds)
{
    createMarkers();
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(7));
    constexpr int stylesAndVariants[6][2] = {{0, 1}, {2, 1}, {4, 1}, {1, 0}, {3, 0}, {5, 0}};
    for (std::size_t series = 0; series < 6; ++series) {
        const FakePainter::Call &call = painter.calls[series];
        const int style = stylesAndVariants[series][0];
        const int variant = stylesAndVariants[series][1];
        EXPECT_EQ(call.kind, FakePainter::Call::MarkerSeries);
        EXPECT_THAT(call.ints, ElementsAre(0, style, variant));
        EXPECT_EQ(call.prices,
                  (variant == 1 ? std::vector<double>{11, 12, 13} : std::vector<double>{9, 8, 7}));
        EXPECT_THAT(call.values, Each(::testing::IsNan()));
    }
    EXPECT_EQ(painter.calls[6].kind, FakePainter::Call::EndPaint);
}

TEST_F(CChartTradeObjectPainting, DrawsALineOverAllBarsThenItsLabelThenEnds)
{
    axis.hasPriceScale = false; // it is drawn wherever it is
    createLine(R"({"costprice":"12.5"})");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(painter.calls[0].values, ElementsAre(12.5, 12.5, 12.5));
    EXPECT_THAT(painter.calls[0].ints, ElementsAre(0));
    EXPECT_EQ(painter.calls[0].number, 1.0);
    EXPECT_EQ(painter.calls[1].kind, FakePainter::Call::SeriesLabel);
    EXPECT_THAT(painter.calls[1].values, ElementsAre(12.5, 12.5, 12.5));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:12.50");
    EXPECT_THAT(painter.calls[1].ints, ElementsAre(-1));
    EXPECT_EQ(painter.calls[2].kind, FakePainter::Call::EndPaint);
}

TEST_F(CChartTradeObjectPainting, CutsTheLabelOfAnAbsurdCostAtItsRoom)
{
    createLine(R"({"costprice":"1e300"})");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    const QByteArray number = QString::asprintf("%.2f", 1e300).toLatin1();
    EXPECT_EQ(painter.calls[1].text, ("持仓成本:" + number).left(127));
}

TEST_F(CChartTradeObjectPainting, OnlyEndsThePaintWithoutACost)
{
    createLine("");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
}

} // namespace
