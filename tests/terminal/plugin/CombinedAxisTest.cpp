// The chart as a combined overlay sees it.
#include "terminal/plugin/CombinedAxis.h"
#include "tests/terminal/support/HostAxisFixture.h"

#include <gmock/gmock.h>

#include <vector>

namespace Terminal {
namespace {

using ::testing::_;
using ::testing::Return;

/// The axis of a combined overlay, whose list of three lines ends with the memory that it stands in.
class CombinedAxisOfAChart : public HostAxisOfAChart
{
protected:
    int choose() { return m_combined.popupMenu(m_lines.data(), nullptr); }

    std::vector<const char *> m_lines = {"one", "two", "three"};
    CombinedAxis m_combined{m_axis};
    QObject m_caller;
};

TEST_F(CombinedAxisOfAChart, ShowsAsManyLinesAsTheCallerTells)
{
    m_caller.setProperty("popupLineCount", 3);
    m_combined.setCaller(&m_caller);
    EXPECT_CALL(m_prompts,
                choose(QStringList{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")}, _))
        .WillOnce(Return(2));
    EXPECT_EQ(choose(), 2);
}

TEST_F(CombinedAxisOfAChart, ShowsTheFirstLineOfACallerThatDoesNotTell)
{
    m_combined.setCaller(&m_caller);
    EXPECT_CALL(m_prompts, choose(QStringList(QStringLiteral("one")), _)).WillOnce(Return(-1));
    EXPECT_EQ(choose(), -1);
}

TEST_F(CombinedAxisOfAChart, IsTheChartInAllElse)
{
    EXPECT_EQ(m_combined.chartMode(), m_axis.chartMode());
    EXPECT_STREQ(m_combined.screenId(), "screen-1");
    EXPECT_EQ(m_combined.markerSize(), m_axis.markerSize());
    EXPECT_EQ(m_combined.barToX(250), m_axis.barToX(250));
    EXPECT_EQ(m_combined.priceToY(100, -1, -1), m_axis.priceToY(100, -1, -1));
    EXPECT_EQ(m_combined.xToBar(300), m_axis.xToBar(300));
    Korvane::AnalyData bar{};
    m_combined.barAt(7, bar);
    EXPECT_EQ(bar.close, m_chart.data().bars[7].close);
    double low = 0;
    double high = 0;
    EXPECT_TRUE(m_combined.visiblePriceRange(low, high));
    EXPECT_EQ(high, m_chart.chartGeometry().highPrice);
    Korvane::IChartObject *updated = nullptr;
    QObject::connect(&m_axis, &HostAxis::updateRequested, &m_axis,
                     [&updated](Korvane::IChartObject *object) { updated = object; });
    auto *const object = reinterpret_cast<Korvane::IChartObject *>(this);
    m_combined.updateObject(object);
    EXPECT_EQ(updated, object);
    EXPECT_CALL(m_prompts, confirm(QStringLiteral("sure?"))).WillOnce(Return(true));
    EXPECT_CALL(m_prompts, show(QStringLiteral("done")));
    EXPECT_TRUE(m_combined.confirmBox("sure?"));
    m_combined.showMessage("done");
}

} // namespace
} // namespace Terminal
