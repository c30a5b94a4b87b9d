// Marks of orders on a chart: which of them become one, and how each is reached.
#include "terminal/chart/marks/MarkPainter.h"
#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/chart/view/MarkFocus.h"
#include "tests/terminal/SomeBars.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <cmath>
#include <optional>
#include <random>

namespace Terminal {
namespace {

constexpr int buyWaiting = 20;
constexpr int buyDealt = 22;

/// A chart with two bars to a pixel.
class OrderMarks : public ::testing::Test
{
protected:
    static constexpr int barCount = 2000;

    OrderMarks()
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

TEST_F(OrderMarks, AreOneWhenCloserThanAGlyph)
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

TEST_F(OrderMarks, AreTwoWhenAGlyphApart)
{
    add(100, 150, buyWaiting);
    add(118, 150, buyWaiting);
    add(300, 150, buyWaiting);
    add(300, 166.5, buyWaiting);
    EXPECT_EQ(painted().size(), 4U);
}

TEST_F(OrderMarks, OfACrowdAreEachBehindOneThatIsNear)
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
        EXPECT_EQ(mark.places.size(), static_cast<size_t>(mark.count));
        behind += mark.places.size();
        for (const QPointF &place : mark.places) {
            EXPECT_TRUE(place == mark.places.front() || !areApart(place, mark.places.front()));
        }
        for (const DrawnMark &other : m_marks.all()) {
            EXPECT_TRUE(&mark == &other || areApart(mark.places.front(), other.places.front()));
        }
    }
    EXPECT_EQ(behind, static_cast<size_t>(added));
}

TEST_F(OrderMarks, OfTwoKindsAreNeverOne)
{
    add(100, 150, buyWaiting);
    add(100, 150, buyDealt);
    EXPECT_EQ(painted().size(), 2U);
}

TEST_F(OrderMarks, BehindAMergedOneAnswerToTheNearestPointer)
{
    const double left = add(100, 150, buyWaiting);
    const double right = add(110, 150, buyWaiting);
    ASSERT_EQ(painted().size(), 1U);
    const DrawnMark &mark = m_marks.all().front();
    const double offset = mark.targetNear({left, 155}).x() - left;
    EXPECT_GT(offset, 0) << "out of reach of the bars before it";
    EXPECT_LT(offset, orderGlyphSize / 2);
    EXPECT_DOUBLE_EQ(mark.targetNear({right, 155}).x(), right + offset);
}

TEST_F(OrderMarks, OfOneBarBehindAMergedOneAnswerByTheirHeight)
{
    add(100, 150, buyWaiting);
    add(100, 162, buyWaiting);
    ASSERT_EQ(painted().size(), 1U);
    const DrawnMark &mark = m_marks.all().front();
    EXPECT_NEAR(mark.targetNear({100, 159}).y(), 158, 0.01);
    EXPECT_NEAR(mark.targetNear({100, 169}).y(), 170, 0.01);
}

/// Marks that tell when they are pressed.
class ListedMarks : public PointerTarget
{
public:
    void add(const ClickableMark &mark)
    {
        m_marks.push_back(mark);
        m_marks.back().press = [this, number = static_cast<int>(m_marks.size()) - 1] {
            pressed.push_back(number);
        };
    }
    bool isHit(const QPointF &) override { return false; }
    void press(const QPointF &, Qt::MouseButton) override {}
    void release(const QPointF &, Qt::MouseButton) override {}
    void move(const QPointF &) override {}
    std::vector<ClickableMark> marks() override { return m_marks; }

    std::vector<int> pressed;

private:
    std::vector<ClickableMark> m_marks;
};

TEST_F(OrderMarks, ThatOverlapAreEachReachedByKeyboard)
{
    const QRectF box(500, 200, orderGlyphSize, orderGlyphSize);
    ListedMarks marks;
    const GlyphNumber waiting = orderGlyph(buyWaiting, EdgeClamp::None);
    const GlyphNumber dealt = orderGlyph(buyDealt, EdgeClamp::None);
    marks.add({waiting, 1, 0, box, {}});
    marks.add({dealt, 1, 0, box, {}});
    marks.add({dealt, 1, 1, box, {}});
    marks.add({waiting, 1, 0, box.translated(5, 0), {}});
    marks.add({waiting, 1, 0, box.translated(5, 0.4), {}});
    MarkFocus focus(&m_chart, &marks);
    for (size_t i = 0; i < marks.marks().size(); ++i) {
        focus.step(1);
        focus.press();
    }
    EXPECT_THAT(marks.pressed, ::testing::UnorderedElementsAre(0, 1, 2, 3, 4));
    for (size_t i = 1; i < marks.marks().size(); ++i) {
        focus.step(-1);
    }
    focus.press();
    EXPECT_EQ(marks.pressed.back(), marks.pressed.front());
}

} // namespace
} // namespace Terminal
