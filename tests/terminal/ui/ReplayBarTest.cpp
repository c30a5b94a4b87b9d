// The controls of the replay.
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ReplayWindow.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSlider>

namespace Terminal {
namespace {

class ReplayBarTest : public ReplayWindow
{
};

TEST_F(ReplayBarTest, PlaysAndPausesWithSpaceAndStepsWithThePoint)
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

TEST_F(ReplayBarTest, LeavesItsKeysToAFormThatHasTheFocus)
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

TEST_F(ReplayBarTest, BeginsAndEndsWithItsKey)
{
    focusChart();
    QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

TEST_F(ReplayBarTest, ChangesItsSpeedWithKeysAndFromTheList)
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

TEST_F(ReplayBarTest, PlaysUpToTheMinuteThatTheSliderIsPutTo)
{
    m_window->setReplaying(true);
    auto *const slider = bar()->findChild<QSlider *>();
    slider->setValue(30);
    EXPECT_EQ(shownBars(), 31U);
    slider->setValue(10); // a market does not go back
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(slider->value(), 30);
}

TEST_F(ReplayBarTest, OfferNoReplayOfDaysWeeksAndMonths)
{
    for (const ChartPeriod period : {ChartPeriod::Day, ChartPeriod::Week, ChartPeriod::Month}) {
        show(period);
        const size_t bars = shownBars();
        focusChart();
        QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
        EXPECT_EQ(replay()->state(), Replay::State::Closed);
        EXPECT_EQ(shownBars(), bars);
    }
}

TEST_F(ReplayBarTest, EndAReplayFromAChartOfDays)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Day);
    focusChart();
    QTest::keyClick(chart(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

TEST_F(ReplayBarTest, LeaveTheSliderInTheHandThatDragsItWhileTheDayPlays)
{
    m_window->setReplaying(true);
    auto *const slider = bar()->findChild<QSlider *>();
    slider->setSliderDown(true);
    slider->setSliderPosition(60);
    replay()->step();
    replay()->step();
    EXPECT_EQ(slider->sliderPosition(), 60);
    slider->setSliderDown(false);
    EXPECT_EQ(shownBars(), 61U);
    EXPECT_EQ(slider->value(), 60);
}

TEST_F(ReplayBarTest, ShowWhereTheDayIsWhenTheSliderIsLetGoBehindIt)
{
    m_window->setReplaying(true);
    auto *const slider = bar()->findChild<QSlider *>();
    slider->setSliderDown(true);
    slider->setSliderPosition(1);
    replay()->playTo(atTime(1000));
    slider->setSliderDown(false);
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(slider->value(), 30);
}

TEST_F(ReplayBarTest, PlayNothingWhenTheDayEndsInTheHandThatDragsTheSlider)
{
    m_window->setReplaying(true);
    auto *const slider = bar()->findChild<QSlider *>();
    slider->setSliderDown(true);
    slider->setSliderPosition(60);
    m_window->setReplaying(false);
    slider->setSliderDown(false);
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

} // namespace
} // namespace Terminal
