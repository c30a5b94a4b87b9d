#pragma once

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostAxis.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

namespace Terminal {

class MockPrompts : public UserPrompts
{
public:
    MOCK_METHOD(int, choose, (const QStringList &rows, const QPoint &place), (override));
    MOCK_METHOD(void, show, (const QString &text), (override));
    MOCK_METHOD(bool, confirm, (const QString &question), (override));
};

/// A chart of three hundred days as overlays call it.
class HostAxisOfAChart : public ::testing::Test
{
protected:
    HostAxisOfAChart()
    {
        m_chart.resize(1000, 600);
        m_chart.setData(dailyChart(300));
        m_chart.show();
        m_chart.grab();
    }

    ChartView m_chart;
    MockPrompts m_prompts;
    HostAxis m_axis{&m_chart, &m_prompts, "screen-1", nullptr};
};

} // namespace Terminal
