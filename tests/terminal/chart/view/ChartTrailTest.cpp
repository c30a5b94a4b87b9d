#include "terminal/chart/view/ChartTrail.h"

#include "terminal/chart/view/ChartPlace.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <QAction>

namespace Terminal {
namespace {

/// A chart of days, and a way from it to those of other securities.
class ChartTrailTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_chart.resize(800, 600);
        show(QStringLiteral("600519"), ChartPeriod::Day);
    }

    void show(const QString &code, ChartPeriod period)
    {
        ChartData data = dailyChart(1000);
        data.security.code = code;
        data.period = period;
        m_chart.setData(data);
        m_loaded.append(code);
    }

    void jumpTo(int bar)
    {
        m_trail.jump([this, bar] { showBar(&m_chart, bar, 100); });
    }

    ChartView m_chart;
    QStringList m_loaded;
    ChartTrail m_trail{&m_chart, [this](const QString &code, ChartPeriod period,
                                        std::optional<Trading::TradingDate> /*day*/) { show(code, period); }};
};

TEST_F(ChartTrailTest, LeadsBackToTheChartAndThePlaceInIt)
{
    showBar(&m_chart, 300, 100);
    const BarSpan before = m_chart.span();
    m_trail.jump([this] { show(QStringLiteral("000001"), ChartPeriod::Week); });
    EXPECT_EQ(m_chart.data().security.code, QStringLiteral("000001"));

    m_trail.back();

    EXPECT_EQ(m_chart.data().security.code, QStringLiteral("600519"));
    EXPECT_EQ(m_chart.data().period, ChartPeriod::Day);
    EXPECT_DOUBLE_EQ(m_chart.span().first, before.first);
    EXPECT_DOUBLE_EQ(m_chart.span().last, before.last);
    EXPECT_FALSE(m_trail.action()->isEnabled());
}

TEST_F(ChartTrailTest, TakesRowsThatLeadOnFromEachOtherForOneStep)
{
    const BarSpan before = m_chart.span();
    jumpTo(300);
    jumpTo(400);
    jumpTo(500);
    m_trail.back();
    EXPECT_DOUBLE_EQ(m_chart.span().first, before.first);
    EXPECT_FALSE(m_trail.action()->isEnabled());
}

TEST_F(ChartTrailTest, RemembersWhereTheUserMovedTheChartBetweenTwoRows)
{
    jumpTo(300);
    m_chart.pan(50);
    const BarSpan moved = m_chart.span();
    jumpTo(500);
    m_trail.back();
    EXPECT_DOUBLE_EQ(m_chart.span().first, moved.first);
    EXPECT_TRUE(m_trail.action()->isEnabled());
}

TEST_F(ChartTrailTest, LoadsNothingToGoBackOnTheSameChart)
{
    jumpTo(300);
    m_loaded.clear();
    m_trail.back();
    EXPECT_TRUE(m_loaded.isEmpty());
}

TEST_F(ChartTrailTest, HasNoWayBackFromARowThatLedNowhere)
{
    m_trail.jump([] {});
    EXPECT_FALSE(m_trail.action()->isEnabled());
    m_trail.back();
    EXPECT_EQ(m_chart.data().security.code, QStringLiteral("600519"));
}

} // namespace
} // namespace Terminal
