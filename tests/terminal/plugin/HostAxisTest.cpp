// What a chart answers to overlays.
#include "tests/terminal/support/HostAxisFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <gmock/gmock.h>

#include <cmath>

namespace Terminal {
namespace {

using ::testing::_;
using ::testing::Return;

TEST_F(HostAxisOfAChart, MapsEveryBarThereAndBack)
{
    for (const int bar : {150, 200, 299}) {
        EXPECT_EQ(m_axis.xToBar(m_axis.barToX(bar)), bar);
    }
}

TEST_F(HostAxisOfAChart, NumbersBarsByTheLoadedRangeWhateverIsInView)
{
    m_chart.setSpan({99.5, 149.5});
    EXPECT_EQ(m_axis.xToBar(m_axis.barToX(120)), 120);
    EXPECT_NEAR(m_axis.barToX(100), m_chart.chartGeometry().barWidth() / 2, 1.5);
}

TEST_F(HostAxisOfAChart, HoldsTheBarInsideTheLoadedRange)
{
    EXPECT_EQ(m_axis.xToBar(1e6), 299);
    EXPECT_EQ(m_axis.xToBar(-1e6), 0);
}

TEST_F(HostAxisOfAChart, MapsThePriceRangeToThePaneUpsideDown)
{
    double low = 0;
    double high = 0;
    ASSERT_TRUE(m_axis.visiblePriceRange(low, high));
    EXPECT_LT(low, high);
    EXPECT_NEAR(m_axis.priceToY(high, -1, -1), 0, 1);
    EXPECT_GT(m_axis.priceToY(low, -1, -1), 300);
    EXPECT_TRUE(std::isnan(m_axis.priceToY(std::nan(""), -1, -1)));
}

TEST_F(HostAxisOfAChart, CopiesABar)
{
    Korvane::AnalyData bar{};
    m_axis.barAt(7, bar);
    EXPECT_EQ(bar.time, static_cast<std::uint32_t>(m_chart.data().bars[7].date));
    EXPECT_DOUBLE_EQ(bar.high, m_chart.data().bars[7].high);
    EXPECT_DOUBLE_EQ(bar.low, m_chart.data().bars[7].low);
    EXPECT_DOUBLE_EQ(bar.close, m_chart.data().bars[7].close);
}

TEST_F(HostAxisOfAChart, LeavesTheRecordAloneForABarThatIsNot)
{
    Korvane::AnalyData bar{};
    bar.time = 99;
    m_axis.barAt(300, bar);
    m_axis.barAt(-1, bar);
    EXPECT_EQ(bar.time, 99U);
}

TEST_F(HostAxisOfAChart, HasNoScaleWithoutBars)
{
    m_chart.setData({});
    double low = 0;
    double high = 0;
    EXPECT_FALSE(m_axis.visiblePriceRange(low, high));
}

TEST_F(HostAxisOfAChart, KnowsTodaysChartFromAPastDays)
{
    ChartData minutes{{QStringLiteral("1"), Market::Shenzhen, QStringLiteral("x")},
                      ChartPeriod::Minute,
                      {{20240102, 571, 1, 1, 1, 1, 1}}};
    EXPECT_EQ(m_axis.chartMode(), 0);
    m_chart.setData(minutes);
    EXPECT_EQ(m_axis.chartMode(), 2);
    minutes.bars.front().date = static_cast<std::int32_t>(TradeChart::currentDate());
    m_chart.setData(minutes);
    EXPECT_EQ(m_axis.chartMode(), 1);
}

TEST_F(HostAxisOfAChart, PassesTheRowsOfAPopUpAsText)
{
    const char *rows[] = {"买入\t09:30:15", "卖出", nullptr};
    EXPECT_CALL(m_prompts, choose(QStringList{QStringLiteral(u"买入\t09:30:15"), QStringLiteral(u"卖出")}, _))
        .WillOnce(Return(1));
    EXPECT_EQ(m_axis.popupMenu(rows, nullptr), 1);
}

TEST_F(HostAxisOfAChart, ChoosesNothingFromAnEmptyPopUp)
{
    const char *rows[] = {nullptr};
    EXPECT_CALL(m_prompts, choose).Times(0);
    EXPECT_EQ(m_axis.popupMenu(rows, nullptr), -1);
    EXPECT_EQ(m_axis.popupMenu(nullptr, nullptr), -1);
}

TEST_F(HostAxisOfAChart, PassesQuestionsAndMessagesOn)
{
    EXPECT_CALL(m_prompts, confirm(QStringLiteral(u"撤单?\n1"))).WillOnce(Return(true));
    EXPECT_CALL(m_prompts, show(QStringLiteral(u"撤单成功")));
    EXPECT_TRUE(m_axis.confirmBox("撤单?\n1"));
    m_axis.showMessage("撤单成功");
}

TEST_F(HostAxisOfAChart, HidesAmountsInListsButNotInQuestions)
{
    m_axis.setAmountsHidden(true);
    const char *rows[] = {"买入\t成交价:10.50\t成交量:300", nullptr};
    EXPECT_CALL(m_prompts, choose(QStringList(QStringLiteral(u"买入\t成交价:10.50\t成交量:***")), _))
        .WillOnce(Return(-1));
    m_axis.popupMenu(rows, nullptr);
    EXPECT_CALL(m_prompts, confirm(QStringLiteral(u"撤单?\n委托数量:300"))).WillOnce(Return(false));
    m_axis.confirmBox("撤单?\n委托数量:300");
}

} // namespace
} // namespace Terminal
