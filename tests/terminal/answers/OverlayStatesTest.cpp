// How things stand with an overlay, by what it has asked and was answered.
#include "terminal/answers/OverlayStates.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class OverlayStatesTest : public ::testing::Test
{
protected:
    OverlayStatesTest() { states.setChart(dailyChart(10)); }

    static const OverlayKind &kind(const char *word) { return *findOverlayKind(QLatin1String(word)); }
    OverlayState::Kind stateOf(const char *word) { return states.stateOf(kind(word)).kind; }

    static Trading::CheckedAnswer answer(const char *command, int rows)
    {
        Trading::CheckedAnswer answer;
        answer.command = QLatin1String(command);
        answer.isForChart = true;
        answer.rows = rows;
        return answer;
    }
    static Trading::CheckedAnswer refusal(const char *command)
    {
        Trading::CheckedAnswer refused = answer(command, 0);
        refused.isRefusal = true;
        refused.findings.append({Trading::AnswerFinding::Refused, QString(), QStringLiteral("busy")});
        return refused;
    }
    static Trading::CheckedAnswer wrong(const char *command)
    {
        Trading::CheckedAnswer answered = answer(command, 3);
        answered.findings.append({Trading::AnswerFinding::Missing, QStringLiteral("bsflag2"), QString()});
        return answered;
    }

    OverlayStates states;
};

TEST_F(OverlayStatesTest, AreOpenBeforeAnythingWasAsked)
{
    EXPECT_EQ(stateOf("cost"), OverlayState::Waiting);
}

TEST_F(OverlayStatesTest, SayThatAnAnswerIsDue)
{
    states.noteAsked(QStringLiteral("HolderCostPrice"));
    EXPECT_EQ(stateOf("cost"), OverlayState::Asked);
}

TEST_F(OverlayStatesTest, SayThatThereIsNothing)
{
    states.noteAnswer(answer("HolderCostPrice", 0));
    EXPECT_EQ(stateOf("cost"), OverlayState::Empty);
}

TEST_F(OverlayStatesTest, AddUpTodaysAndPastTrades)
{
    states.noteAnswer(answer("TodayTrade", 0));
    states.noteAnswer(answer("HistoryTrade", 2));
    EXPECT_EQ(stateOf("trades"), OverlayState::Drawn);
}

TEST_F(OverlayStatesTest, SayThatOneOfTwoAnswersWasRefused)
{
    states.noteAnswer(answer("TodayTrade", 1));
    states.noteAnswer(refusal("HistoryTrade"));
    EXPECT_EQ(stateOf("trades"), OverlayState::Refused);
    EXPECT_THAT(states.stateOf(kind("trades")).faults,
                ::testing::ElementsAre(QStringLiteral("HistoryTrade: refused: busy")));
}

TEST_F(OverlayStatesTest, SayThatAnAnswerIsWrongUntilOneIsRight)
{
    states.noteAnswer(wrong("HistoryTrade"));
    EXPECT_EQ(stateOf("trades"), OverlayState::Wrong);
    states.noteAsked(QStringLiteral("HistoryTrade"));
    EXPECT_EQ(stateOf("trades"), OverlayState::Wrong) << "the marks are still those of the wrong answer";
    states.noteAnswer(answer("HistoryTrade", 3));
    EXPECT_EQ(stateOf("trades"), OverlayState::Drawn);
}

TEST_F(OverlayStatesTest, SayThatAnOverlayHasNoPlaceOnTheChart)
{
    EXPECT_EQ(stateOf("orders"), OverlayState::Elsewhere);
}

TEST_F(OverlayStatesTest, ForgetWhatAnotherChartWasAnswered)
{
    states.noteAnswer(answer("HolderCostPrice", 1));
    states.setChart(dailyChart(20));
    EXPECT_EQ(stateOf("cost"), OverlayState::Waiting);
}

TEST_F(OverlayStatesTest, CountTheRowsOfAnotherMarket)
{
    Trading::CheckedAnswer others = answer("HolderCostPrice", 0);
    others.otherMarkets = 1;
    states.noteAnswer(others);
    EXPECT_EQ(overlayStateText(states.stateOf(kind("cost")), 0, {}),
              QStringLiteral("nothing; of another market: 1"));
}

TEST(OverlayStatesText, CountsTheMarksInView)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, 3, {}), QStringLiteral("in view: 3"));
}

TEST(OverlayStatesText, SaysThatItsMarksAreOutOfView)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, 0, {}), QStringLiteral("none in view"));
}

TEST(OverlayStatesText, HasTheFigureOfALineWithItsArrow)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, 0, {QStringLiteral(u"持仓成本:50.310 ↓")}),
              QStringLiteral(u"50.310 ↓"));
}

} // namespace
} // namespace Terminal
