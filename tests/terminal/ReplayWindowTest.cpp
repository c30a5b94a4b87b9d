// A recorded day that is replayed in the terminal's window.
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostAxis.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/ReplayBar.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/OverlayLog.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QTest>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ReplayWindow : public ::testing::Test
{
protected:
    void SetUp() override
    {
        TerminalOptions options;
        options.overlays = QStringList(QStringLiteral("orders"));
        options.size = QSize(1280, 720);
        m_window = std::make_unique<MainWindow>(DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(),
                                                options);
        show(ChartPeriod::Minute, 20180108);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        const auto library = OverlayLibrary::open(QStringLiteral(TEST_OVERLAYS));
        ASSERT_TRUE(library) << qPrintable(library.error());
        const Gate open = [](QObject *, const std::function<void()> &proceed) { proceed(); };
        m_window->startOverlays(library.value(), {open, open});
    }

    void show(ChartPeriod period, std::int32_t day)
    {
        ASSERT_TRUE(m_window->load(QStringLiteral("000001"), period, day))
            << qPrintable(m_window->loadError());
    }

    ChartView *chart() { return m_window->chart(); }
    Replay *replay() { return m_window->replay(); }
    ReplayBar *bar() { return m_window->findChild<ReplayBar *>(); }
    size_t shownBars() { return chart()->data().bars.size(); }
    int chartMode() { return HostAxis(chart(), m_window->prompts(), "screen", nullptr).chartMode(); }

    void focusChart()
    {
        m_window->activateWindow();
        chart()->setFocus();
        ASSERT_TRUE(waitUntil([this] { return chart()->hasFocus(); }));
    }

    std::unique_ptr<MainWindow> m_window;
};

TEST_F(ReplayWindow, ShowsTheDayAsToday)
{
    EXPECT_EQ(chartMode(), 2);
    m_window->setReplaying(true);
    EXPECT_EQ(chartMode(), 1);
    EXPECT_EQ(shownBars(), 1U);
}

TEST_F(ReplayWindow, GrowsWithoutMakingOverlaysAnew)
{
    m_window->setReplaying(true);
    QApplication::processEvents();
    overlayLog();
    replay()->step();
    replay()->playTo(10 * 60);
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("calc 000001 2 21"));
    EXPECT_THAT(log, HasSubstr("calc 000001 31 21"));
    EXPECT_EQ(countOf(log, "calc"), 2) << log;
    EXPECT_THAT(log, Not(HasSubstr("ended")));
}

TEST_F(ReplayWindow, HasRoomForTheWholeDayFromTheFirstBarOn)
{
    m_window->setReplaying(true);
    const BarSpan atOpening = chart()->span();
    EXPECT_GE(atOpening.last, 240.5);
    replay()->playTo(15 * 60);
    EXPECT_DOUBLE_EQ(chart()->span().last, atOpening.last);
    EXPECT_TRUE(chart()->data().ahead.empty());
}

TEST_F(ReplayWindow, LeavesTheViewOfOlderBarsAlone)
{
    m_window->setReplaying(true);
    replay()->playTo(10 * 60);
    chart()->setSpan({0, 20});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 0);
    EXPECT_DOUBLE_EQ(chart()->span().last, 20);
}

TEST_F(ReplayWindow, MovesTheViewAlongWithTheLastBar)
{
    m_window->setReplaying(true);
    replay()->playTo(10 * 60);
    chart()->setSpan({10.5, 30.5});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 11.5);
    EXPECT_DOUBLE_EQ(chart()->span().last, 31.5);
}

TEST_F(ReplayWindow, ComesBackToTheReplayFromAnotherPeriod)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Day, 0);
    replay()->playTo(10 * 60);
    EXPECT_GT(shownBars(), 1000U);
    EXPECT_TRUE(bar()->isVisible());
    show(ChartPeriod::Minute, 0);
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(chartMode(), 1);
}

TEST_F(ReplayWindow, ShowsTheRecordedDayWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    m_window->setReplaying(false);
    EXPECT_EQ(shownBars(), 241U);
    EXPECT_EQ(chart()->data().bars.front().date, 20180108);
}

TEST_F(ReplayWindow, StaysOnAnotherPeriodWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Week, 0);
    m_window->setReplaying(false);
    EXPECT_EQ(chart()->data().period, ChartPeriod::Week);
    EXPECT_FALSE(bar()->isVisible());
}

TEST_F(ReplayWindow, BeginsTheDayAgain)
{
    m_window->setReplaying(true);
    replay()->playTo(10 * 60);
    replay()->restart();
    EXPECT_EQ(shownBars(), 1U);
    EXPECT_EQ(chart()->data().ahead.size(), 240U);
}

TEST_F(ReplayWindow, PlaysAndPausesWithSpaceAndStepsWithThePoint)
{
    m_window->setReplaying(true);
    focusChart();
    QTest::keyClick(chart(), Qt::Key_Space);
    EXPECT_EQ(replay()->state(), Replay::State::Playing);
    QTest::keyClick(chart(), Qt::Key_Space);
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    QTest::keyClick(chart(), Qt::Key_Period);
    EXPECT_EQ(replay()->completed(), 2U);
}

TEST_F(ReplayWindow, LeavesItsKeysToAFormThatHasTheFocus)
{
    m_window->setReplaying(true);
    auto *const form = new QLineEdit(m_window.get());
    form->show();
    m_window->activateWindow();
    form->setFocus();
    ASSERT_TRUE(waitUntil([form] { return form->hasFocus(); }));
    QTest::keyClicks(form, QStringLiteral("1 .["));
    EXPECT_EQ(form->text(), QStringLiteral("1 .["));
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    EXPECT_EQ(replay()->completed(), 1U);
}

TEST_F(ReplayWindow, BeginsAndEndsWithItsKey)
{
    focusChart();
    QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

TEST_F(ReplayWindow, ChangesItsSpeedWithKeysAndFromTheList)
{
    m_window->setReplaying(true);
    focusChart();
    replay()->setSpeed(30);
    QTest::keyClick(chart(), Qt::Key_BracketRight);
    EXPECT_EQ(replay()->speed(), 60);
    QTest::keyClick(chart(), Qt::Key_BracketLeft);
    QTest::keyClick(chart(), Qt::Key_BracketLeft);
    EXPECT_EQ(replay()->speed(), 10);
    replay()->setSpeed(45);
    EXPECT_EQ(bar()->findChild<QComboBox *>()->currentText(), QStringLiteral(u"45×"));
}

TEST_F(ReplayWindow, PlaysUpToTheMinuteThatTheSliderIsPutTo)
{
    m_window->setReplaying(true);
    auto *const slider = bar()->findChild<QSlider *>();
    slider->setValue(30);
    EXPECT_EQ(shownBars(), 31U);
    slider->setValue(10); // a market does not go back
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(slider->value(), 30);
}

} // namespace
} // namespace Terminal
