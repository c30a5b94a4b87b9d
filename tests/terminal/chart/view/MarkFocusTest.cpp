// The keyboard's way over the marks.
#include "terminal/chart/view/MarkFocus.h"
#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/OverlayWindow.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QMessageBox>

#include <algorithm>
#include <vector>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class MarkFocusByKeys : public OverlayWindow
{
protected:
    /// Pixels of the ring's colour around the mark of a bar.
    int ringPixels(int bar) { return ringPixels(onMark(bar)); }
    int ringPixels(const QPointF &place)
    {
        const QPoint middle = chart()->canvas()->mapTo(chart(), place.toPoint());
        const QRect around(middle - QPoint(16, 30), QSize(32, 60));
        return pixelsOf(chart()->grab(around).toImage(), chart()->theme().accent);
    }
};

TEST_F(MarkFocusByKeys, GoesFromMarkToMark)
{
    showMarks();
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar()) << "the last in view is the first";
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 3);
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 6);
    key(Qt::Key_N);
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar());
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar()) << "there is no other";
}

TEST_F(MarkFocusByKeys, StartsWithTheFirstMarkInViewGoingForward)
{
    showMarks();
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 39) << "at the left edge of the view";
}

TEST_F(MarkFocusByKeys, MovesTheViewToAMarkBeyondIt)
{
    showMarks();
    key(Qt::Key_N);
    const BarSpan before = chart()->span();
    key(Qt::Key_P);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 42);
    EXPECT_LT(chart()->span().first, before.first - 10);
    EXPECT_DOUBLE_EQ(chart()->span().width(), before.width());
    EXPECT_GT(ringPixels(m_pointed), 30);
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, lastMarkedBar() - 39);
}

TEST_F(MarkFocusByKeys, RingsAMergedMark)
{
    showMarks();
    chart()->showAll();
    QApplication::processEvents();
    const auto marks = m_window->overlays()->pointer()->marks();
    const auto merged =
        std::find_if(marks.begin(), marks.end(), [](const ClickableMark &mark) { return mark.count > 1; });
    ASSERT_NE(merged, marks.end());
    const QPointF place = merged->box.center();
    EXPECT_EQ(ringPixels(place), 0);
    for (auto mark = marks.begin(); mark <= merged; ++mark) {
        key(Qt::Key_N);
    }
    EXPECT_GT(ringPixels(place), 30);
}

TEST_F(MarkFocusByKeys, FindsAMarkSeveralViewsAway)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const int firstOrder = static_cast<int>(chart()->data().bars.size()) / 2 - 45;
    chart()->setSpan({0, 15});
    key(Qt::Key_N);
    EXPECT_LT(chart()->span().first, firstOrder);
    EXPECT_GT(chart()->span().last, firstOrder);
    whenOpen<QMenu>([](QMenu *menu) { menu->close(); });
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), HasSubstr("chose -1"));
}

TEST_F(MarkFocusByKeys, StaysWhereItIsWithoutAnyMark)
{
    show({QStringLiteral("cost")});
    chart()->setSpan({1000, 1100});
    key(Qt::Key_N);
    EXPECT_DOUBLE_EQ(chart()->span().first, 1000);
    key(Qt::Key_P);
    EXPECT_DOUBLE_EQ(chart()->span().first, 1000);
}

TEST_F(MarkFocusByKeys, DrawsARingAroundTheMark)
{
    showMarks();
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
    key(Qt::Key_P);
    EXPECT_GT(ringPixels(lastMarkedBar()), 30);
    key(Qt::Key_P);
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
    EXPECT_GT(ringPixels(lastMarkedBar() - 3), 30);
    key(Qt::Key_Escape);
    EXPECT_EQ(ringPixels(lastMarkedBar() - 3), 0);
    EXPECT_EQ(m_pointed, -1);
}

TEST_F(MarkFocusByKeys, OpensTheListAtTheMarkAndNotAtThePointer)
{
    showMarks();
    QCursor::setPos(chart()->mapToGlobal(QPoint(5, 5)));
    for (int i = 0; i < 4; ++i) {
        key(Qt::Key_N);
    }
    const int bar = lastMarkedBar() - 30;
    QRect place;
    whenOpen<QMenu>([&place](QMenu *menu) {
        place = menu->frameGeometry();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    key(Qt::Key_Return);
    const QPoint mark = chart()->canvas()->mapToGlobal(onMark(bar).toPoint());
    EXPECT_TRUE(place.adjusted(-30, -40, 30, 40).contains(mark))
        << place.x() << "," << place.y() << " for " << mark.x() << "," << mark.y();
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("press on bar " + std::to_string(bar)));
    EXPECT_THAT(log, HasSubstr("chose 0"));
}

TEST_F(MarkFocusByKeys, StaysWithItsMarkWhenTheViewMoves)
{
    showMarks();
    key(Qt::Key_N);
    key(Qt::Key_N);
    const int bar = m_pointed;
    key(Qt::Key_Minus);
    key(Qt::Key_Left);
    EXPECT_EQ(m_pointed, bar);
    whenOpen<QMenu>([](QMenu *menu) { menu->close(); });
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), HasSubstr("press on bar " + std::to_string(bar) + "\n"));
    key(Qt::Key_N);
    EXPECT_EQ(m_pointed, bar + 3);
}

TEST_F(MarkFocusByKeys, StaysWithItsMarkWhenThePointerLeavesTheChart)
{
    showMarks();
    key(Qt::Key_P);
    const int bar = m_pointed;
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(chart()->canvas(), &leave);
    EXPECT_EQ(m_pointed, bar);
}

TEST_F(MarkFocusByKeys, PressesNothingWithoutAMark)
{
    showMarks();
    key(Qt::Key_Return);
    key(Qt::Key_P);
    key(Qt::Key_Escape);
    key(Qt::Key_Return);
    EXPECT_THAT(overlayLog(), ::testing::Not(HasSubstr("press on")));
}

TEST_F(MarkFocusByKeys, LeavesTheMarkAtAClickOfTheMouse)
{
    showMarks();
    key(Qt::Key_P);
    click({300, 400});
    EXPECT_EQ(ringPixels(lastMarkedBar()), 0);
}

TEST_F(MarkFocusByKeys, HasNoMarkToGoToWithoutOverlays)
{
    show({});
    key(Qt::Key_N);
    key(Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(MarkFocusByKeys, ReachesTheQuestionForAnOrder)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    QString question;
    whenOpen<QMenu>([&question](QMenu *menu) {
        whenOpen<QMessageBox>([&question](QMessageBox *box) {
            question = box->informativeText();
            QTest::keyClick(box, Qt::Key_Tab);
            QTest::keyClick(box->focusWidget(), Qt::Key_Space);
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    key(Qt::Key_N);
    key(Qt::Key_Return);
    for (const QString &named : {QStringLiteral(u"买入"), QStringLiteral(u"测试"),
                                 QStringLiteral(u"委托价格:10.000"), QStringLiteral(u"委托数量:300")}) {
        EXPECT_TRUE(question.contains(named)) << qPrintable(named);
    }
    EXPECT_THAT(overlayLog(), HasSubstr("confirmed"));
}

constexpr int buyWaiting = Korvane::BuyWaiting;
constexpr int buyDealt = Korvane::BuyDealed;

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

/// One mark, and how often all are asked for.
class CountingMarks : public PointerTarget
{
public:
    bool isHit(const QPointF & /*position*/) override { return false; }
    void press(const QPointF & /*position*/, Qt::MouseButton /*button*/) override {}
    void release(const QPointF & /*position*/, Qt::MouseButton /*button*/) override {}
    void move(const QPointF & /*position*/) override {}
    std::vector<ClickableMark> marks() override
    {
        ++asked;
        return {{0, 1, 0, QRectF(300, 200, 16, 16), [] {}}};
    }

    int asked = 0;
};

TEST_F(MarkFocusByKeys, AsksForNoMarksWhenTheCrosshairMovesAlone)
{
    show({});
    CountingMarks marks;
    MarkFocus focus(chart(), &marks);
    focus.step(1);
    ASSERT_TRUE(focus.ring());
    chart()->grab();
    marks.asked = 0;
    for (int x = 100; x < 110; ++x) {
        chart()->setCrosshair(QPoint(x, 100));
        chart()->grab();
    }
    EXPECT_EQ(marks.asked, 0);
    chart()->refit();
    EXPECT_TRUE(focus.ring());
    EXPECT_EQ(marks.asked, 1) << "the marks may lie elsewhere";
}

} // namespace
} // namespace Terminal
