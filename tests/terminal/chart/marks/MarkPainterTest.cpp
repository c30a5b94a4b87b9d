// Marks on a chart: which of them become one, where they stand, and how each is reached.
#include "terminal/chart/marks/MarkPainter.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <optional>
#include <random>
#include <vector>

namespace Terminal {
namespace {

constexpr int buyWaiting = Korvane::BuyWaiting;
constexpr int buyDealt = Korvane::BuyDealed;

/// A chart with two bars to a pixel.
class MarkPainterTest : public ::testing::Test
{
protected:
    static constexpr int barCount = 2000;

    MarkPainterTest()
    {
        m_chart.resize(1000, 600);
        m_chart.setData(dailyChart(barCount));
        m_chart.show();
        m_chart.showAll();
        m_chart.grab();
        m_sprites.setLook(m_chart.theme(), 1);
        m_painter.emplace(m_chart.chartGeometry(), m_chart.visibleBars(), &m_sprites, &m_marks);
    }

    const ChartGeometry &geometry() const { return m_chart.chartGeometry(); }

    /// A mark as near to a pixel as a bar is; tells its x.
    double add(double x, double y, int kind)
    {
        const int bar = static_cast<int>(std::round(geometry().xToBar(x)));
        m_painter->addOrderMark(bar, geometry().yToPrice(y), kind, false);
        return geometry().barToX(bar);
    }

    const std::vector<DrawnMark> &painted()
    {
        QImage image(m_chart.canvas()->size(), QImage::Format_RGB32);
        QPainter canvas(&image);
        m_painter->paint(&canvas);
        return m_marks.all();
    }

    ChartView m_chart;
    GlyphSprites m_sprites;
    DrawnMarks m_marks;
    std::optional<MarkPainter> m_painter; ///< of one repaint
};

bool areApart(const QPointF &one, const QPointF &other)
{
    const QPointF away = one - other;
    return std::abs(away.x()) >= orderGlyphSize || std::abs(away.y()) >= orderGlyphSize;
}

TEST_F(MarkPainterTest, MakesOneOfMarksCloserThanAGlyph)
{
    // Wherever on the canvas: a row of pairs, each a pixel farther along both axes than the one before.
    constexpr int pairs = 12;
    for (int i = 0; i < pairs; ++i) {
        add(40 + i * 61, 150 + i, buyWaiting);
        add(40 + i * 61 + 14, 150 + i + 14, buyWaiting);
    }
    EXPECT_EQ(painted().size(), static_cast<size_t>(pairs));
    for (const DrawnMark &mark : m_marks.all()) {
        EXPECT_EQ(mark.count, 2);
    }
}

TEST_F(MarkPainterTest, LeavesTwoThatAreAGlyphApart)
{
    add(100, 150, buyWaiting);
    add(118, 150, buyWaiting);
    add(300, 150, buyWaiting);
    add(300, 166.5, buyWaiting);
    EXPECT_EQ(painted().size(), 4U);
}

TEST_F(MarkPainterTest, PutsEachOfACrowdBehindOneThatIsNear)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> x(geometry().left + 20, geometry().right - 20);
    std::uniform_real_distribution<double> y(geometry().top + 20, geometry().bottom - 20);
    constexpr int added = 3000;
    for (int i = 0; i < added; ++i) {
        add(x(random), y(random), buyWaiting);
    }
    size_t behind = 0;
    for (const DrawnMark &mark : painted()) {
        const PlaceList::Range places = m_marks.placesOf(mark);
        EXPECT_EQ(std::distance(places.begin(), places.end()), mark.count);
        behind += static_cast<size_t>(mark.count);
        const QPointF first = *places.begin();
        for (const QPointF &place : places) {
            EXPECT_TRUE(place == first || !areApart(place, first));
        }
        for (const DrawnMark &other : m_marks.all()) {
            EXPECT_TRUE(&mark == &other || areApart(first, *m_marks.placesOf(other).begin()));
        }
    }
    EXPECT_EQ(behind, static_cast<size_t>(added));
}

TEST_F(MarkPainterTest, NeverMakesOneOfTwoKinds)
{
    add(100, 150, buyWaiting);
    add(100, 150, buyDealt);
    EXPECT_EQ(painted().size(), 2U);
}

TEST_F(MarkPainterTest, LetsMarksBehindAMergedOneAnswerToTheNearestPointer)
{
    const double left = add(100, 150, buyWaiting);
    const double right = add(110, 150, buyWaiting);
    ASSERT_EQ(painted().size(), 1U);
    const DrawnMark &mark = m_marks.all().front();
    const double offset = m_marks.targetNear(mark, {left, 155}).x() - left;
    EXPECT_GT(offset, 0) << "out of reach of the bars before it";
    EXPECT_LT(offset, orderGlyphSize / 2);
    EXPECT_DOUBLE_EQ(m_marks.targetNear(mark, {right, 155}).x(), right + offset);
}

TEST_F(MarkPainterTest, LetsMarksOfOneBarBehindAMergedOneAnswerByTheirHeight)
{
    add(100, 150, buyWaiting);
    add(100, 162, buyWaiting);
    ASSERT_EQ(painted().size(), 1U);
    const DrawnMark &mark = m_marks.all().front();
    EXPECT_NEAR(m_marks.targetNear(mark, {100, 159}).y(), 158, 0.01);
    EXPECT_NEAR(m_marks.targetNear(mark, {100, 169}).y(), 170, 0.01);
}

struct ChartShape
{
    int bars; ///< in view
    int height;
};

/// A chart of two thousand bars, the last ones in view.
class MarkPainterOnAChart : public ::testing::TestWithParam<ChartShape>
{
protected:
    static constexpr int barCount = 2000;

    MarkPainterOnAChart()
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

TEST_P(MarkPainterOnAChart, NeverHidesAWick)
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

TEST_P(MarkPainterOnAChart, CountsAllMarksAndHitsThemAll)
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

INSTANTIATE_TEST_SUITE_P(Shapes, MarkPainterOnAChart,
                         ::testing::Values(ChartShape{20, 600}, ChartShape{100, 600}, ChartShape{400, 600},
                                           ChartShape{1999, 600}, ChartShape{20, 200},
                                           ChartShape{1999, 150}));

} // namespace
} // namespace Terminal
