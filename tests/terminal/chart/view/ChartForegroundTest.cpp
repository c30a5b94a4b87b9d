// What of the picture is painted anew while the pointer moves, beside the same picture painted whole.
#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/SomeBars.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

namespace Terminal {
namespace {

/// As it stands on the screen.
QImage shown(const ChartView &chart)
{
    QApplication::processEvents();
    return chart.screen()->grabWindow(chart.winId()).toImage();
}

TEST(ChartForeground, LeavesNothingBehindTheCrosshairAndPaintsAllOfIt)
{
    ChartView chart;
    chart.resize(800, 500);
    chart.setData(dailyChart(300));
    chart.show();
    ASSERT_FALSE(shown(chart).isNull());
    for (int x = 0; x < chart.canvas()->width(); x += 13) {
        chart.setCrosshair(QPoint(x, 20 + x * 7 % 400));
        const QImage moved = shown(chart);
        chart.update();
        ASSERT_EQ(moved, shown(chart)) << "at " << x;
    }
    chart.setCrosshair({});
    const QImage left = shown(chart);
    chart.update();
    EXPECT_EQ(left, shown(chart));
}

} // namespace
} // namespace Terminal
