#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

#include <cfloat>
#include <utility>

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class CChartTradeObjectIdles : public CChartTradeObjectTest,
                               public ::testing::WithParamInterface<std::pair<const char *, const char *>>
{
};

TEST_P(CChartTradeObjectIdles, AndDrawsAndAsksNothing)
{
    create(GetParam().second);
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    hearNotification();
    hearHistory({buy(10)});
    EXPECT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());

    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());

    int untouched = 4711;
    EXPECT_TRUE(overlay->calcRatio(1, 2));
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, CChartTradeObjectIdles,
    ::testing::Values(std::pair{"Null", static_cast<const char *>(nullptr)}, std::pair{"Empty", ""},
                      std::pair{"NoJson", "{\"type\":1"}, std::pair{"AnArray", R"([{"type":1}])"},
                      std::pair{"WithoutType", "{}"}, std::pair{"TypeAsText", R"({"type":"1"})"},
                      std::pair{"TypeAsFraction", R"({"type":0.5})"},
                      std::pair{"TypeMinusOne", R"({"type":-1})"}, std::pair{"TypeTwo", R"({"type":2})"}),
    [](const auto &row) { return row.param.first; });

} // namespace
