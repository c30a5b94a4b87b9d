#include "terminal/trade/OpenQuestion.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using namespace std::chrono_literals;

class OpenQuestionTest : public ::testing::Test
{
protected:
    OpenQuestionTest()
    {
        m_question.setTimeout(1h); // where it is the subject, a test sets it
        QObject::connect(&m_question, &OpenQuestion::unanswered, &m_question, [this] { ++m_unanswered; });
    }

    QString id() const { return QString::number(m_sent); }

    bool m_hasBus = true;
    int m_sent = 0; ///< the last id
    int m_unanswered = 0;
    OpenQuestion m_question{[this] { return m_hasBus ? QString::number(++m_sent) : QString(); }};
};

TEST_F(OpenQuestionTest, IsAnsweredOnceByTheAnswerOfItsId)
{
    m_question.ask();
    EXPECT_FALSE(m_question.isAnswered());

    EXPECT_FALSE(m_question.close(QStringLiteral("another")));
    EXPECT_TRUE(m_question.close(id()));

    EXPECT_TRUE(m_question.isAnswered());
    EXPECT_FALSE(m_question.close(id())) << "the same answer once more";
}

TEST_F(OpenQuestionTest, AsksOnceMoreForAllWhoAskedWhileItWasOpen)
{
    m_question.ask();
    m_question.ask();
    m_question.ask();
    EXPECT_EQ(m_sent, 1);

    EXPECT_TRUE(m_question.close(id()));

    EXPECT_EQ(m_sent, 2);
    EXPECT_FALSE(m_question.isAnswered());
    EXPECT_TRUE(m_question.close(id()));
    EXPECT_EQ(m_sent, 2);
}

TEST_F(OpenQuestionTest, TakesNoAnswerToWhatItAskedBeforeItAskedAnew)
{
    m_question.ask();
    const QString old = id();

    m_question.askAnew();

    EXPECT_FALSE(m_question.close(old));
    EXPECT_TRUE(m_question.close(id()));
}

TEST_F(OpenQuestionTest, AsksAtOnceAfterOneThatIsForgotten)
{
    m_question.ask();
    m_question.ask();
    const QString old = id();
    m_question.forget();
    EXPECT_FALSE(m_question.close(old));
    EXPECT_FALSE(m_question.isAnswered());

    m_question.ask();

    EXPECT_NE(id(), old);
    EXPECT_TRUE(m_question.close(id()));
    EXPECT_TRUE(m_question.isAnswered()) << "nobody has asked since";
}

TEST_F(OpenQuestionTest, SaysSoWithoutABus)
{
    m_hasBus = false;

    m_question.ask();

    EXPECT_EQ(m_unanswered, 1);
    EXPECT_FALSE(m_question.isAnswered());
}

TEST_F(OpenQuestionTest, SaysSoWhenNoAnswerComesInTime)
{
    m_question.setTimeout(1ms);

    m_question.ask();

    EXPECT_TRUE(waitUntil([this] { return m_unanswered == 1; }));
    EXPECT_FALSE(m_question.isAnswered());
}

TEST_F(OpenQuestionTest, TakesALateAnswer)
{
    m_question.setTimeout(1ms);
    m_question.ask();
    ASSERT_TRUE(waitUntil([this] { return m_unanswered == 1; }));

    EXPECT_TRUE(m_question.close(id()));
    EXPECT_TRUE(m_question.isAnswered());
}

TEST_F(OpenQuestionTest, TakesNothingOldAfterSomethingNew)
{
    m_question.setTimeout(1ms);
    m_question.ask();
    const QString old = id();
    ASSERT_TRUE(waitUntil([this] { return m_unanswered == 1; }));
    m_question.setTimeout(1h);
    m_question.ask();

    EXPECT_TRUE(m_question.close(id()));
    EXPECT_FALSE(m_question.close(old));
}

TEST_F(OpenQuestionTest, GoesOnWaitingWhenALateAnswerComes)
{
    m_question.setTimeout(1ms);
    m_question.ask();
    const QString old = id();
    ASSERT_TRUE(waitUntil([this] { return m_unanswered == 1; }));
    m_question.setTimeout(1h);
    m_question.ask();

    EXPECT_TRUE(m_question.close(old));
    EXPECT_FALSE(m_question.isAnswered());
    EXPECT_TRUE(m_question.close(id()));
}

} // namespace
} // namespace Terminal
