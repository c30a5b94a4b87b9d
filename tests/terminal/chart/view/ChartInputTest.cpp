// Mouse and keys of the chart.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMouseEvent>
#include <QWheelEvent>

namespace Terminal {
namespace {

class ChartInputTest : public OverlayWindow
{
};

TEST_F(ChartInputTest, ZoomsAtThePointerWithTheWheel)
{
    show({});
    const double x = 400;
    const double bar = geometry().xToBar(x);
    const double width = chart()->span().width();
    QWheelEvent wheel({x, 200}, chart()->canvas()->mapToGlobal(QPoint(400, 200)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(chart()->canvas(), &wheel);
    EXPECT_LT(chart()->span().width(), width * 0.9);
    EXPECT_NEAR(geometry().xToBar(x), bar, 0.01);
}

TEST_F(ChartInputTest, ReadsOutTheBarUnderThePointerAlsoAfterAZoom)
{
    show({});
    int pointed = -1;
    QObject::connect(chart(), &ChartView::pointedBarChanged, chart(), [&pointed](int bar) { pointed = bar; });
    moveTo({400, 200});
    EXPECT_TRUE(waitUntil([&] { return pointed == chart()->barAt(400); }));
    chart()->zoom(0.3, 900);
    EXPECT_EQ(pointed, chart()->barAt(400));
    chart()->setCrosshair({});
    EXPECT_EQ(pointed, -1);
}

TEST_F(ChartInputTest, KeepsTheNewestBarsInViewHoweverOftenAKeyZoomsIn)
{
    show({});
    for (int press = 0; press < 16; ++press) {
        key(Qt::Key_Plus);
    }
    const BarRange shown = barsInView(chart()->span(), chart()->data().bars.size());
    EXPECT_GE(shown.end - shown.first, 5U);
}

TEST_F(ChartInputTest, ReadsOutNoBarWherePointerIsBesideThem)
{
    show({});
    int pointed = 0;
    QObject::connect(chart(), &ChartView::pointedBarChanged, chart(), [&pointed](int bar) { pointed = bar; });
    const double last = geometry().barToX(static_cast<int>(chart()->data().bars.size()) - 1);
    moveTo({last, 200});
    ASSERT_TRUE(waitUntil([&] { return pointed > 0; }));
    EXPECT_FALSE(chart()->timeAt(last).isEmpty());
    const double beside = last + 3 * geometry().barWidth();
    moveTo({beside, 200});
    EXPECT_TRUE(waitUntil([&] { return pointed == -1; }));
    EXPECT_EQ(chart()->timeAt(beside), QString());
}

TEST_F(ChartInputTest, TakesTheCrosshairAwayWhenTheChartIsMadeNarrowerThanThePointer)
{
    show({});
    moveTo({1100, 200});
    ASSERT_TRUE(waitUntil([this] { return chart()->hasCrosshair(); }));
    m_window->resize(900, 720);
    EXPECT_TRUE(waitUntil([this] { return chart()->canvas()->width() < 1000 && !chart()->hasCrosshair(); }));
}

TEST_F(ChartInputTest, PansWithTheMouse)
{
    show({});
    const BarSpan before = chart()->span();
    const double barWidth = geometry().barWidth();
    QTest::mousePress(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, {300, 300});
    QMouseEvent drag(QEvent::MouseMove, QPointF(500, 300), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(chart()->canvas(), &drag);
    QTest::mouseRelease(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, {500, 300});
    EXPECT_NEAR(chart()->span().first, before.first - 200 / barWidth, 0.1);
    EXPECT_NEAR(chart()->span().width(), before.width(), 1e-6);
}

TEST_F(ChartInputTest, PansNoMoreWhenTheButtonWasReleasedElsewhere)
{
    show({});
    QTest::mousePress(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, {300, 300});
    const BarSpan before = chart()->span();
    QMouseEvent move(QEvent::MouseMove, QPointF(500, 300), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(chart()->canvas(), &move);
    EXPECT_DOUBLE_EQ(chart()->span().first, before.first);
}

TEST_F(ChartInputTest, StaysInsideTheLoadedBars)
{
    show({});
    chart()->pan(1e9);
    EXPECT_GE(chart()->barAt(geometry().right), static_cast<int>(chart()->data().bars.size()) - 1);
    chart()->pan(-1e9);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    chart()->zoom(1e9, 10);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    chart()->zoom(1e-9, 10);
    EXPECT_NEAR(chart()->span().width(), 10, 1e-6);
}

TEST_F(ChartInputTest, MovesAndZoomsWithKeys)
{
    show({});
    const BarSpan before = chart()->span();
    QTest::keyClick(chart(), Qt::Key_Left);
    EXPECT_LT(chart()->span().first, before.first);
    QTest::keyClick(chart(), Qt::Key_Home);
    EXPECT_DOUBLE_EQ(chart()->span().first, -0.5);
    QTest::keyClick(chart(), Qt::Key_End);
    EXPECT_NEAR(chart()->span().last, before.last, 1e-6);
    QTest::keyClick(chart(), Qt::Key_Plus);
    EXPECT_LT(chart()->span().width(), before.width());
}

} // namespace
} // namespace Terminal
