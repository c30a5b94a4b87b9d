#include "endpoint/OwedAnswers_p.h"

#include <gmock/gmock.h>

using LocalCommunication::OwedAnswers;

TEST(OwedAnswers, KnowsWhereAnAnswerGoes)
{
    OwedAnswers owed;
    const QByteArray channel = owed.add({"their/answers", "7"});

    const auto recipient = owed.find(channel);

    ASSERT_TRUE(recipient);
    EXPECT_EQ(recipient->path, "their/answers");
    EXPECT_EQ(recipient->correlation, "7");
}

TEST(OwedAnswers, OwesEachAnswerOnce)
{
    OwedAnswers owed;
    const QByteArray channel = owed.add({"their/answers", "7"});
    EXPECT_TRUE(owed.find(channel));
    owed.noteAnswered(channel);

    EXPECT_FALSE(owed.find(channel));
    EXPECT_TRUE(owed.isOwn(channel));
}

TEST(OwedAnswers, TakesNoNameOfAMessageForAChannelOfItsOwn)
{
    OwedAnswers owed;
    OwedAnswers ofAnotherClient;

    EXPECT_FALSE(owed.isOwn("answer.1"));
    EXPECT_FALSE(owed.isOwn(ofAnotherClient.add({"their/answers", "7"})));
}

TEST(OwedAnswers, ForgetsTheOldestOfThousands)
{
    OwedAnswers owed;
    const QByteArray oldest = owed.add({"their/answers", "0"});
    QByteArray youngest;
    for (int i = 1; i <= 5000; ++i) {
        youngest = owed.add({"their/answers", QByteArray::number(i)});
    }

    EXPECT_FALSE(owed.find(oldest));
    EXPECT_TRUE(owed.find(youngest));
}
