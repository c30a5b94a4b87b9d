#include "endpoint/BusPatience_p.h"

#include <gtest/gtest.h>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

class BusPatienceTest : public ::testing::Test
{
protected:
    /// Nobody answers there.
    void waitInVain(const QByteArray &path)
    {
        m_patience.ask(path, m_patience.nextQuestion(m_now), m_now, 3s, false);
        m_patience.stopWaiting(m_now += 3s, false);
    }

    Patience::Duration timeFor(const QByteArray &path)
    {
        return m_patience.ask(path, m_patience.nextQuestion(m_now), m_now, 3s, false);
    }

    BusPatience m_patience;
    Patience::Time m_now = Patience::Time() + 1h;
};

} // namespace

TEST_F(BusPatienceTest, TrustsWhoeverAnswersOnAnotherTopic)
{
    waitInVain("a");

    EXPECT_EQ(timeFor("b"), 3s);
    EXPECT_EQ(timeFor("a"), 5ms);
}

TEST_F(BusPatienceTest, TakesNoAnswerForThatOfAnotherTopic)
{
    waitInVain("a");
    const quint64 question = m_patience.nextQuestion(m_now);
    m_patience.ask("b", question, m_now, 3s, false);
    m_patience.hear(question, m_now + 1ms);
    m_patience.stopWaiting(m_now += 1ms, false);

    EXPECT_EQ(timeFor("a"), 5ms);
}

TEST_F(BusPatienceTest, TrustsAgainWhoeverAnswersOnItsTopic)
{
    waitInVain("a");
    waitInVain("b");
    const quint64 question = m_patience.nextQuestion(m_now);
    m_patience.ask("a", question, m_now, 3s, false);
    timeFor("b");
    m_patience.hear(question, m_now + 100ms);

    EXPECT_EQ(timeFor("a"), 3s);
}

TEST_F(BusPatienceTest, GivesNoNumberTwice)
{
    const quint64 first = m_patience.nextQuestion(m_now);

    EXPECT_GT(m_patience.nextQuestion(m_now), first);
    EXPECT_GT(BusPatience().nextQuestion(m_now + 2ns), first) << "of a thread that began anew";
}

} // namespace LocalCommunication
