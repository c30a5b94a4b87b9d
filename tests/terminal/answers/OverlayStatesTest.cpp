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

TEST_F(OverlayStatesTest, ForgetWhatAnotherSecurityWasAnswered)
{
    states.noteAnswer(answer("HolderCostPrice", 1));
    ChartData other = dailyChart(10);
    other.security.code = QStringLiteral("000001");
    states.setChart(other);
    EXPECT_EQ(stateOf("cost"), OverlayState::Waiting);
}

TEST_F(OverlayStatesTest, KeepTheCostForAnotherChartOfTheSecurity)
{
    states.noteAnswer(answer("HolderCostPrice", 0));
    states.setChart(dailyChart(20));
    EXPECT_EQ(stateOf("cost"), OverlayState::Empty) << "it is not asked for again";
}

TEST_F(OverlayStatesTest, ForgetTheTradesOfAnotherRange)
{
    states.noteAnswer(answer("HistoryTrade", 2));
    states.setChart(dailyChart(20));
    EXPECT_EQ(stateOf("trades"), OverlayState::Waiting);
}

const QDateTime morning(QDate(2026, 11, 20), QTime(10, 15, 3));

TEST_F(OverlayStatesTest, SaySinceWhenNoAnswerCame)
{
    states.noteAsked(QStringLiteral("HolderCostPrice"), morning);
    states.noteAsked(QStringLiteral("HolderCostPrice"), morning.addSecs(2));
    EXPECT_FALSE(states.stateOf(kind("cost"), morning.addMSecs(2999)).unansweredSince);
    EXPECT_EQ(states.stateOf(kind("cost"), morning.addSecs(3)).unansweredSince, morning.time());
}

TEST_F(OverlayStatesTest, SayItAlsoOfOneThatWasAnsweredBefore)
{
    states.noteAnswer(answer("HolderCostPrice", 1));
    states.noteAsked(QStringLiteral("HolderCostPrice"), morning);
    const OverlayState state = states.stateOf(kind("cost"), morning.addSecs(60));
    EXPECT_EQ(state.kind, OverlayState::Drawn);
    EXPECT_TRUE(state.isTrouble());
    EXPECT_EQ(overlayStateText(state, {0, {QStringLiteral("50.310")}}, {}),
              QStringLiteral("50.310; no answer since 10:15:03"));
}

TEST_F(OverlayStatesTest, AreFineAgainWithTheNextAnswer)
{
    states.noteAsked(QStringLiteral("HolderCostPrice"), morning);
    states.noteAnswer(answer("HolderCostPrice", 1));
    EXPECT_FALSE(states.stateOf(kind("cost"), morning.addSecs(60)).unansweredSince);
}

TEST_F(OverlayStatesTest, CountTheRowsOfAnotherMarket)
{
    Trading::CheckedAnswer others = answer("HolderCostPrice", 0);
    others.otherMarkets = 1;
    states.noteAnswer(others);
    EXPECT_EQ(overlayStateText(states.stateOf(kind("cost")), {}, {}),
              QStringLiteral("nothing; of another market: 1"));
}

TEST(OverlayStatesText, CountsTheMarksInView)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, {3}, {}), QStringLiteral("in view: 3"));
}

TEST(OverlayStatesText, SaysThatItsMarksAreOutOfView)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, {}, {}), QStringLiteral("none in view"));
}

TEST(OverlayStatesText, HasTheFigureOfALineWithItsArrow)
{
    EXPECT_EQ(overlayStateText({OverlayState::Drawn}, {0, {QStringLiteral(u"持仓成本:50.310 ↓")}}, {}),
              QStringLiteral(u"50.310 ↓"));
}

class OverlayStatesOfAnOpenQuestion : public ::testing::TestWithParam<OverlayState::Kind>
{
};

TEST_P(OverlayStatesOfAnOpenQuestion, SayWhyNobodyAnswers)
{
    const OverlayState state{GetParam()};
    EXPECT_EQ(overlayStateText(state, {}, QStringLiteral("no bus")), QStringLiteral("no bus"));
}

TEST_P(OverlayStatesOfAnOpenQuestion, GoByWhatIsDrawn)
{
    const OverlayState state{GetParam()};
    EXPECT_EQ(overlayStateText(state, {2}, QStringLiteral("no bus")), QStringLiteral("in view: 2"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, OverlayStatesOfAnOpenQuestion,
                         ::testing::Values(OverlayState::Waiting, OverlayState::Asked,
                                           OverlayState::Unheard));

} // namespace
} // namespace Terminal
