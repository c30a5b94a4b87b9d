#include "endpoint/Patience_p.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

using Duration = Patience::Duration;

constexpr Duration inDoubt = 5ms;
constexpr Duration mostUnnoticed = 50ms;

/// A window that asks a module, with a clock of their own.
class PatienceTest : public ::testing::Test
{
protected:
    /// Time in which nobody asks and the window moves; what was owed comes in.
    void rest(Duration time)
    {
        m_patience.endTurn();
        const auto end = m_now + time;
        while (!m_onTheWay.empty() && m_onTheWay.begin()->first <= end) {
            hearNext();
        }
        m_now = end;
    }

    /// Asks once; the module takes so long, or hangs. True when its answer came in time.
    bool ask(std::optional<Duration> takes)
    {
        const quint64 question = ++m_questions;
        const auto began = m_now;
        m_answered = 0;
        const auto end = m_now + m_patience.ask(question, m_now, timeout, isCrowded);
        if (takes) {
            m_onTheWay.emplace(began + *takes, question);
        }
        while (m_answered != question && !m_onTheWay.empty() && m_onTheWay.begin()->first <= end) {
            hearNext();
        }
        m_now = m_answered == question ? m_now : end;
        m_patience.stopWaiting(m_now, isCrowded);
        stood = m_now - began;
        stands += stood > mostUnnoticed ? 1 : 0;
        stoodInAll += stood > mostUnnoticed ? stood : Duration(0);
        return m_answered == question;
    }

    /// The same with a module that answers one question after the other.
    bool askInLine(Duration takes)
    {
        m_free = std::max(m_free, m_now) + takes;
        return ask(m_free - m_now);
    }

    /// The same in a turn that no event loop ends.
    void pause(Duration time) { m_now += time; }

    void joinAnotherBus() { m_patience.beginAnew(m_now); }
    void beginAgain() { m_patience = Patience(); }

    bool isCrowded = false;
    Duration timeout = 3s;
    Duration stood{}; ///< for the last question
    int stands = 0;   ///< that a user notices
    Duration stoodInAll{};

private:
    void hearNext()
    {
        const auto first = m_onTheWay.begin();
        m_now = std::max(m_now, first->first);
        m_answered = first->second;
        m_patience.hear(first->second, m_now);
        m_onTheWay.erase(first);
    }

    Patience m_patience;
    Patience::Time m_now = Patience::Time() + 1h;
    Patience::Time m_free; // the module, which answers in line
    std::multimap<Patience::Time, quint64> m_onTheWay;
    quint64 m_questions = 0;
    quint64 m_answered = 0; // the question that was answered last
};

} // namespace

TEST_F(PatienceTest, WaitsTheWholeTimeOutAtFirst)
{
    EXPECT_FALSE(ask(std::nullopt));
    EXPECT_EQ(stood, timeout);
}

TEST_F(PatienceTest, IsNotLostOverAQuestionThatIsNotToBeWaitedFor)
{
    timeout = 0s;
    EXPECT_TRUE(ask(0s));
    timeout = 3s;
    EXPECT_TRUE(ask(100ms));
    EXPECT_TRUE(ask(100ms)) << "the module answered all in time";
}

TEST_F(PatienceTest, WaitsOnceForAModuleThatHangs)
{
    ask(std::nullopt);
    for (int i = 0; i < 1000; ++i) {
        rest(1s);
        ask(std::nullopt);
        EXPECT_EQ(stood, inDoubt);
    }
    EXPECT_EQ(stands, 1);
}

TEST_F(PatienceTest, WaitsForASlowModuleAtEachQuestion)
{
    for (const Duration takes : {50ms, 200ms, 1000ms, 2000ms, 2990ms}) {
        for (int i = 0; i < 20; ++i) {
            EXPECT_TRUE(ask(takes));
            EXPECT_EQ(stood, takes);
        }
    }
}

TEST_F(PatienceTest, WaitsForASlowModuleAlsoInAFewMessages)
{
    for (int i = 0; i < 10; ++i) { // they wait to be delivered, but are no crowd
        EXPECT_TRUE(ask(1s));
    }
}

TEST_F(PatienceTest, TakesTheAnswersOfAQuickModuleAlsoInDoubt)
{
    ask(std::nullopt);
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(ask(1ms));
    }
}

TEST_F(PatienceTest, WaitsInDoubtOnceInATurn)
{
    ask(std::nullopt);
    rest(1s);
    ask(std::nullopt);
    EXPECT_EQ(stood, inDoubt);
    ask(std::nullopt); // of another overlay
    EXPECT_EQ(stood, 2ms);
    rest(1ms);
    ask(std::nullopt);
    EXPECT_EQ(stood, inDoubt);
}

TEST_F(PatienceTest, GivesASlowModuleThatWasLateItsTimeAgain)
{
    for (const Duration takes : {50ms, 200ms, 1000ms, 2000ms}) {
        ask(std::nullopt);
        EXPECT_FALSE(ask(takes)) << "whoever asks stands still no more";
        rest(5s);
        for (int i = 0; i < 200; ++i, rest(500ms)) {
            EXPECT_TRUE(ask(takes)) << takes.count();
        }
    }
}

TEST_F(PatienceTest, GivesASlowModuleItsTimeThoughItIsAskedMoreOftenThanItAnswers)
{
    ask(std::nullopt);
    int answered = 0;
    for (int i = 0; i < 100; ++i, rest(100ms)) {
        answered += ask(1s) ? 1 : 0;
    }
    EXPECT_GE(answered, 85);
}

TEST_F(PatienceTest, WaitsForASlowModuleThatHasOtherQuestionsToAnswerFirst)
{
    ask(std::nullopt);
    for (int i = 0; i < 10; ++i, rest(5ms)) { // until it has answered the first one
        askInLine(100ms);
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(askInLine(100ms)) << i;
    }
}

TEST_F(PatienceTest, TrustsAgainAlsoWhileItWaitsForAnotherQuestion)
{
    ask(std::nullopt);
    ask(7ms);
    ask(std::nullopt); // meanwhile the one before is answered

    EXPECT_TRUE(ask(10ms));
}

TEST_F(PatienceTest, WaitsAgainForAModuleThatSpeaksAgain)
{
    ask(20s);
    ask(15s);
    rest(20s); // it stood still, and answers what it was asked

    EXPECT_TRUE(ask(200ms));
}

TEST_F(PatienceTest, TakesALateAnswerForNoPromiseWhileOthersAreOwed)
{
    ask(std::nullopt);
    for (int i = 0; i < 100; ++i) {
        ask(timeout + 2s);
        EXPECT_EQ(stood, inDoubt);
        rest(1s);
    }
}

TEST_F(PatienceTest, StandsAtMostThreeTimesInAMinuteForAModuleThatIsAlwaysTooLate)
{
    ask(std::nullopt);
    stands = 0;
    for (int i = 0; i < 60; ++i) { // ten minutes
        ask(timeout + 1ms);
        rest(10s);
    }
    EXPECT_LE(stands, 3 * 11);
}

TEST_F(PatienceTest, TrustsAtOnceWhoSpeaksAgain)
{
    for (int i = 0; i < 2; ++i) { // as one does that begins after the window, and is replaced by another one
        ask(std::nullopt);
        ask(1ms);
    }

    EXPECT_TRUE(ask(1s));
}

TEST_F(PatienceTest, CountsNoDoubtsThatCostLittle)
{
    timeout = 200ms;
    for (int i = 0; i < 20; ++i) {
        ask(std::nullopt);
        ask(1ms);
    }
    EXPECT_TRUE(ask(100ms));
}

TEST_F(PatienceTest, DoubtsAtMostThreeTimesInAMinute)
{
    for (int i = 0; i < 3; ++i) {
        ask(std::nullopt);
        ask(1ms);
    }
    rest(50s);
    ask(1ms);
    ask(std::nullopt);
    EXPECT_EQ(stood, inDoubt);
    rest(5s);
    ask(1ms);
    ask(std::nullopt);
    EXPECT_EQ(stood, timeout);
}

TEST_F(PatienceTest, TrustsSeldomWhoAnswersNowAndThen)
{
    ask(std::nullopt);
    for (int i = 0; i < 600; ++i) { // ten minutes, in which every other question is answered late
        ask(i % 2 == 0 ? std::optional<Duration>(700ms) : std::nullopt);
        rest(1s);
    }
    EXPECT_LE(stands, 2 * 3 * 11) << "each time of trust takes two questions";
    EXPECT_GE(stands, 10) << "it is trusted again";
}

TEST_F(PatienceTest, ServesAModuleThatIsStartedAgainFromItsFirstQuickAnswerOn)
{
    ask(std::nullopt);
    ask(std::nullopt); // this one is lost with the old module
    rest(2s);

    EXPECT_TRUE(ask(2ms));
    EXPECT_TRUE(ask(2ms));
}

TEST_F(PatienceTest, ServesASlowModuleThatIsStartedAgain)
{
    ask(std::nullopt);
    rest(20s);
    ask(300ms);
    rest(1s);

    EXPECT_TRUE(ask(300ms));
}

TEST_F(PatienceTest, StandsForOneTimeOutInAFloodForASwampedModule)
{
    for (const unsigned seed : {1U, 2U, 3U, 4U, 5U}) {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int> takes(0, 8000); // milliseconds
        beginAgain();
        isCrowded = true;
        stoodInAll = {};
        for (int i = 0; i < 20000; ++i) { // minutes of notifications
            ask(i % 10 == 0 ? 1ms : std::chrono::milliseconds(takes(random)));
        }
        EXPECT_LE(stoodInAll, timeout) << seed;
    }
}

TEST_F(PatienceTest, StandsOnceInAFloodThoughEachQuestionIsAnswered)
{
    isCrowded = true;
    int answered = 0;
    for (int i = 0; i < 1000; ++i, rest(4ms)) {
        answered += ask(300ms) ? 1 : 0;
    }
    EXPECT_EQ(stands, 1);
    EXPECT_EQ(answered, 1);
}

TEST_F(PatienceTest, StandsOnceInAFloodThatComesInWaves)
{
    for (int i = 0; i < 100; ++i, rest(100ms)) {
        isCrowded = i % 20 == 0;
        ask(60ms);
    }
    EXPECT_EQ(stands, 1);
}

TEST_F(PatienceTest, GetsAllAnswersOfTheTurnInWhichItStands)
{
    isCrowded = true; // the messages are delivered when all is asked
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(ask(100ms)) << i;
    }
    rest(1ms);

    EXPECT_FALSE(ask(100ms));
}

TEST_F(PatienceTest, StandsForOneTimeOutInATurnOfAFlood)
{
    isCrowded = true;
    for (int i = 0; i < 100; ++i) {
        ask(1100ms);
    }
    EXPECT_EQ(stoodInAll, timeout);
}

TEST_F(PatienceTest, WaitsInAFloodForWhoeverHasALongerTimeOutThanAWindow)
{
    timeout = 20s;
    isCrowded = true;
    for (int i = 0; i < 100; ++i, rest(4ms)) {
        EXPECT_TRUE(ask(17s));
    }
    EXPECT_TRUE(ask(17500ms));
    rest(4ms);
    EXPECT_FALSE(ask(17500ms));
}

TEST_F(PatienceTest, ServesWhoeverHasAShortTimeOutInAFlood)
{
    timeout = 200ms;
    isCrowded = true;
    for (int i = 0; i < 100; ++i, rest(4ms)) {
        EXPECT_TRUE(ask(20ms));
    }
}

TEST_F(PatienceTest, ServesAModuleThatIsNotNoticedInAFlood)
{
    isCrowded = true;
    for (int i = 0; i < 1000; ++i, rest(4ms)) {
        EXPECT_TRUE(ask(25ms)) << i;
    }
    EXPECT_EQ(stands, 0);
}

TEST_F(PatienceTest, StandsForNobodyRightAfterAFlood)
{
    isCrowded = true;
    ask(std::nullopt);
    isCrowded = false;
    stands = 0;
    for (int i = 0; i < 90; ++i) { // what was asked in the flood is answered now
        ask(1s);
        rest(100ms);
    }
    EXPECT_EQ(stands, 0);
}

TEST_F(PatienceTest, GivesASlowModuleItsTimeAgainWhenAFloodIsOver)
{
    isCrowded = true;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ask(1s));
    }
    EXPECT_FALSE(ask(1s)) << "or the window would stand still for as many seconds as messages come";
    isCrowded = false;
    rest(11s);
    ask(1s);
    rest(2s);

    EXPECT_TRUE(ask(1s));
}

TEST_F(PatienceTest, ServesAQuickModuleInAFlood)
{
    isCrowded = true;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(ask(i == 0 ? 40ms : 1ms));
    }
}

TEST_F(PatienceTest, BeginsAnewOnAnotherBus)
{
    ask(std::nullopt);
    joinAnotherBus();
    ask(std::nullopt);
    EXPECT_EQ(stood, timeout);
}

TEST_F(PatienceTest, TrustsNoBusThatIsLostAgainAndAgain)
{
    for (int i = 0; i < 60; ++i, rest(1s)) {
        ask(std::nullopt);
        joinAnotherBus();
    }
    EXPECT_LE(stands, 2 * 3) << "of a minute, and of what it took";
}

TEST_F(PatienceTest, StandsOnceInAFloodInWhichTheBusIsLost)
{
    isCrowded = true;
    for (int i = 0; i < 100; ++i, rest(4ms)) {
        ask(std::nullopt);
        joinAnotherBus();
    }
    EXPECT_EQ(stands, 1);
}

TEST_F(PatienceTest, ServesWhoeverRunsNoEventLoopAndIsAnsweredQuickly)
{
    isCrowded = true; // nobody delivers what waits
    for (int i = 0; i < 10000; ++i) {
        EXPECT_TRUE(ask(4ms)) << i;
    }
    EXPECT_TRUE(ask(20ms));
}

TEST_F(PatienceTest, TakesAPauseForTheEndOfATurn)
{
    isCrowded = true; // nobody delivers what waits
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(ask(20ms)) << i;
        pause(51ms);
    }
}

TEST_F(PatienceTest, StandsForTheShortestTimeOutOfATurnInAFlood)
{
    isCrowded = true;
    timeout = 3s;
    ask(1s);
    timeout = 20s;
    EXPECT_FALSE(ask(std::nullopt));
    EXPECT_EQ(stoodInAll, 3s);
}

TEST_F(PatienceTest, EndsATurnByTheShortestTimeOutInIt)
{
    isCrowded = true;
    timeout = 3s;
    ask(1s);
    timeout = 20s;
    ask(1ms);
    rest(4ms);

    EXPECT_FALSE(ask(1s));
}

TEST_F(PatienceTest, NeverWaitsLongerThanItIsTold)
{
    Patience patience;
    const auto now = Patience::Time() + 1h;
    EXPECT_EQ(patience.ask(1, now, 1ms, false), 1ms);
    patience.stopWaiting(now + 1ms, false);
    EXPECT_EQ(patience.ask(2, now, 1ms, false), 1ms);
}

} // namespace LocalCommunication
