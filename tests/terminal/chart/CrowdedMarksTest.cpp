// Marks on charts of many shapes.
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/marks/MarkPainter.h"
#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <optional>

namespace Terminal {
namespace {

struct ChartShape
{
    int bars; ///< in view
    int height;
};

/// A chart of two thousand bars, the last ones in view.
class MarksOnAChart : public ::testing::TestWithParam<ChartShape>
{
protected:
    static constexpr int barCount = 2000;

    MarksOnAChart()
    {
        m_chart.resize(1000, GetParam().height);
        m_chart.setData(dailyChart(barCount));
        m_chart.show();
        m_chart.setSpan({barCount - GetParam().bars - 0.5, barCount - 0.5});
        m_chart.grab();
        m_sprites.setLook(m_chart.theme(), 1);
        m_painter.emplace(m_chart.chartGeometry(), m_chart.visibleBars(), &m_sprites, &m_marks);
    }

    static int firstInView() { return barCount - GetParam().bars; }
    const Bar &bar(int number) const { return m_chart.data().bars[static_cast<size_t>(number)]; }

    void paint()
    {
        QImage image(m_chart.canvas()->size(), QImage::Format_RGB32);
        QPainter canvas(&image);
        m_painter->paint(&canvas);
    }

    ChartView m_chart;
    GlyphSprites m_sprites;
    DrawnMarks m_marks;
    std::optional<MarkPainter> m_painter; ///< of one repaint
};

TEST_P(MarksOnAChart, NeverHideAWick)
{
    for (int number = firstInView(); number < barCount; number += 2) {
        m_painter->addSeriesMark(number, bar(number).high, number % 3 * 2);
        m_painter->addSeriesMark(number, bar(number).low, number % 3 * 2 + 1);
    }
    paint();
    ASSERT_FALSE(m_marks.all().empty());
    const ChartGeometry &geometry = m_chart.chartGeometry();
    for (const DrawnMark &mark : m_marks.all()) {
        for (const BarColumn &column : m_chart.visibleBars().columns()) {
            const double x = geometry.barToX(column.position);
            if (x < mark.box.left() || x > mark.box.right()) {
                continue;
            }
            const bool above = mark.glyph % 2 == 0;
            EXPECT_TRUE(above ? mark.box.bottom() <= geometry.priceToY(column.high) + 1
                              : mark.box.top() >= geometry.priceToY(column.low) - 1);
        }
    }
}

TEST_P(MarksOnAChart, AreAllCountedAndAllHit)
{
    int added = 0;
    for (int number = firstInView(); number < barCount; number += 2, ++added) {
        m_painter->addSeriesMark(number, bar(number).high, 0);
    }
    paint();
    int counted = 0;
    for (const DrawnMark &mark : m_marks.all()) {
        counted += mark.count;
        EXPECT_TRUE(m_marks.targetAt(mark.box.center()));
    }
    EXPECT_EQ(counted, added);
    EXPECT_FALSE(m_marks.targetAt({-50, -50}));
}

INSTANTIATE_TEST_SUITE_P(Shapes, MarksOnAChart,
                         ::testing::Values(ChartShape{20, 600}, ChartShape{100, 600}, ChartShape{400, 600},
                                           ChartShape{1999, 600}, ChartShape{20, 200},
                                           ChartShape{1999, 150}));

} // namespace
} // namespace Terminal
