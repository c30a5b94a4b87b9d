#include "terminal/chart/view/MarkFocus.h"
#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <vector>

namespace Terminal {
namespace {

constexpr int buyWaiting = 20;
constexpr int buyDealt = 22;

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

TEST(MarkFocus, ReachesEachOfMarksThatOverlap)
{
    ChartView chart;
    chart.resize(1000, 600);
    chart.setData(dailyChart(2000));
    chart.show();
    chart.showAll();
    chart.grab();
    const QRectF box(500, 200, orderGlyphSize, orderGlyphSize);
    ListedMarks marks;
    const GlyphNumber waiting = orderGlyph(buyWaiting, EdgeClamp::None);
    const GlyphNumber dealt = orderGlyph(buyDealt, EdgeClamp::None);
    marks.add({waiting, 1, 0, box, {}});
    marks.add({dealt, 1, 0, box, {}});
    marks.add({dealt, 1, 1, box, {}});
    marks.add({waiting, 1, 0, box.translated(5, 0), {}});
    marks.add({waiting, 1, 0, box.translated(5, 0.4), {}});
    MarkFocus focus(&chart, &marks);
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
