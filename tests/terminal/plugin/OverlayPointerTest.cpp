// What the mouse does with overlays.
#include "terminal/plugin/OverlayPointer.h"
#include "terminal/plugin/HostRecords.h"
#include "tests/terminal/support/OverlayChart.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMenu>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class OverlayPointerOnAChart : public OverlayChart
{
protected:
    /// Shows an overlay that was calculated with these bars and has drawn itself.
    void show(const char *word, const Bars &bars)
    {
        ASSERT_TRUE(m_overlays.show(kind(word)));
        calc(word, bars);
        overlayLog();
    }
    void calc(const char *word, const Bars &bars)
    {
        const ChartData &data = m_chart.data();
        m_overlays.find(kind(word))
            ->handle->calc(hostSecurity(data.security, 1), hostBars(bars), overlayPeriod(data.period));
        m_chart.replot();
        m_chart.grab();
    }

    const Bars &bars() const { return m_chart.data().bars; }
    QPointF firstMark() { return m_pointer.marks().front().box.center(); }

    OverlayPointer m_pointer{&m_chart, &m_overlays, &m_axis};
};

TEST_F(OverlayPointerOnAChart, HitsTheUppermostOfTwo)
{
    show("combined-cost", bars());
    show("trades", bars());
    EXPECT_CALL(m_prompts, choose(::testing::SizeIs(3), ::testing::_)).WillOnce(::testing::Return(-1));
    m_pointer.press(firstMark(), Qt::LeftButton);
    EXPECT_CALL(m_prompts, choose(::testing::SizeIs(2), ::testing::_)).WillOnce(::testing::Return(-1));
    m_pointer.press(QPointF(300, 2), Qt::LeftButton);
}

TEST_F(OverlayPointerOnAChart, HitsNothingOfAnOverlayThatHasOtherBars)
{
    show("trades", bars());
    const QPointF mark = firstMark();
    EXPECT_TRUE(m_pointer.isHit(mark));
    calc("trades", Bars(bars().begin(), bars().end() - 1));
    EXPECT_FALSE(m_pointer.isHit(mark));
    EXPECT_TRUE(m_pointer.marks().empty());
}

TEST_F(OverlayPointerOnAChart, HitsNothingBelowThePricePane)
{
    show("combined-cost", bars());
    EXPECT_TRUE(m_pointer.isHit({300, m_chart.chartGeometry().bottom - 1}));
    EXPECT_FALSE(m_pointer.isHit({300, m_chart.chartGeometry().bottom + 1}));
}

TEST_F(OverlayPointerOnAChart, PressesAMarkWhereItIs)
{
    show("trades", bars());
    EXPECT_CALL(m_prompts, choose).WillOnce(::testing::Return(2));
    m_pointer.marks().front().press();
    EXPECT_THAT(overlayLog(), HasSubstr("chose 2"));
}

TEST_F(OverlayPointerOnAChart, PressesNoMarkOfAnOverlayThatIsGone)
{
    show("trades", bars());
    const ClickableMark mark = m_pointer.marks().front();
    m_overlays.hide(kind("trades"));
    EXPECT_CALL(m_prompts, choose).Times(0);
    mark.press();
}

TEST_F(OverlayPointerOnAChart, TellsMarksOfTwoOverlaysApart)
{
    show("cost", bars());
    show("trades", bars());
    EXPECT_EQ(m_pointer.marks().front().layer, 1);
}

TEST_F(OverlayPointerOnAChart, BringsAReleaseToWhatIsHit)
{
    show("combined-cost", bars());
    m_pointer.release({300, 300}, Qt::LeftButton);
    EXPECT_EQ(overlayLog(), "release\n");
}

class OverlayPointerOnAWindow : public OverlayWindow
{
};

TEST_F(OverlayPointerOnAWindow, LetsTheCursorPointWithinFivePixelsOfTheCostLine)
{
    show({QStringLiteral("cost")});
    const double y = geometry().priceToY(costPrice());
    for (const double offset : {-4.0, 0.0, 4.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; })) << offset;
    }
    for (const double offset : {-8.0, 8.0}) {
        moveTo({300, y + offset});
        EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::CrossCursor; })) << offset;
    }
}

TEST_F(OverlayPointerOnAWindow, ShowsAMarkAsClickable)
{
    show({QStringLiteral("trades")});
    moveTo(onMark(lastMarkedBar()));
    EXPECT_TRUE(waitUntil([this] { return cursor() == Qt::PointingHandCursor; }));
}

TEST_F(OverlayPointerOnAWindow, PassesTheRightButtonOn)
{
    show({QStringLiteral("cost")});
    click({300, geometry().priceToY(costPrice())}, Qt::RightButton);
    EXPECT_THAT(overlayLog(), HasSubstr("right press"));
}

} // namespace
} // namespace Terminal
