// A recorded day that is replayed, among the other charts of the window.
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ReadoutBar.h"
#include "terminal/ui/ChartBar.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ReplayWindow.h"

#include <gmock/gmock.h>

#include <QComboBox>

namespace Terminal {
namespace {

class ReplayInAWindow : public ReplayWindow
{
};

TEST_F(ReplayInAWindow, ShowsTheDayAsToday)
{
    EXPECT_EQ(chartMode(), 2);
    m_window->setReplaying(true);
    EXPECT_EQ(chartMode(), 1);
    EXPECT_EQ(shownBars(), 1U);
}

TEST_F(ReplayInAWindow, ComesBackToTheReplayFromAnotherPeriod)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Day);
    replay()->playTo(atTime(1000));
    EXPECT_GT(shownBars(), 1000U);
    EXPECT_TRUE(bar()->isVisible());
    show(ChartPeriod::Minute);
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(chartMode(), 1);
}

TEST_F(ReplayInAWindow, ShowsTheRecordedDayWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    m_window->setReplaying(false);
    EXPECT_EQ(shownBars(), 241U);
    EXPECT_EQ(chart()->data().bars.front().date, 20180108);
}

TEST_F(ReplayInAWindow, NamesTheRecordedDayInItsTexts)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    const QString readout = m_window->findChild<ReadoutBar *>()->accessibleName();
    EXPECT_TRUE(readout.contains(QStringLiteral("2018-01-08 10:00"))) << qPrintable(readout);
    EXPECT_EQ(chart()->timeAt(geometry().barToX(30)), QStringLiteral("2018-01-08 10:00"));
    EXPECT_EQ(chart()->timeAt(geometry().barToX(31)), QStringLiteral("2018-01-08 10:01")) << "is to come";
    EXPECT_TRUE(chartSummary(*chart()).contains(QStringLiteral("2018-01-08 09:30")));
    const auto *const days =
        m_window->findChild<ChartBar *>()->findChild<QComboBox *>(QStringLiteral("shortChoice"));
    EXPECT_TRUE(days->currentText().startsWith(QStringLiteral("2018-01-08"))) << "beside the recorded one";
    EXPECT_NE(days->findText(QStringLiteral("2018-01-08")), days->currentIndex());
}

TEST_F(ReplayInAWindow, StaysOnAnotherPeriodWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Week);
    m_window->setReplaying(false);
    EXPECT_EQ(chart()->data().period, ChartPeriod::Week);
    EXPECT_FALSE(bar()->isVisible());
}

} // namespace
} // namespace Terminal
