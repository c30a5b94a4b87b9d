#include "terminal/answers/AnswerChecker.h"

#include "tests/support/LogCapture.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <memory>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AnswerCheckerTest : public ::testing::Test
{
protected:
    /// Padded with blanks, which mean nothing.
    static QByteArray answer(const char *command, int bytes = 0)
    {
        return QByteArray(R"({"cmd":")") + command + R"(","stkcode":"600519"})" + QByteArray(bytes, ' ');
    }

    void check(const QByteArray &payload)
    {
        checker->check(payload, chart,
                       [this](const Trading::CheckedAnswer &checked, const QByteArray &digest) {
                           commands.push_back(checked.command.toStdString());
                           digests.push_back(digest.toStdString());
                       });
    }

    bool isChecked(std::size_t count) const
    {
        return waitUntil([this, count] { return commands.size() >= count; });
    }

    static constexpr int longOne = 200000;

    const Trading::AnsweredChart chart{QStringLiteral("screen-1"),
                                       {QStringLiteral("600519"), Trading::Market::Shanghai}};
    std::unique_ptr<AnswerChecker> checker = std::make_unique<AnswerChecker>(nullptr);
    std::vector<std::string> commands;
    std::vector<std::string> digests;
};

} // namespace

TEST_F(AnswerCheckerTest, ChecksAShortAnswerAtOnce)
{
    check(answer("TodayTrade"));

    EXPECT_THAT(commands, ElementsAre("TodayTrade"));
}

TEST_F(AnswerCheckerTest, ChecksALongAnswerWhileTheWindowGoesOn)
{
    check(answer("TodayTrade", longOne));

    EXPECT_THAT(commands, IsEmpty());
    EXPECT_TRUE(isChecked(1));
}

TEST_F(AnswerCheckerTest, KeepsTheOrderOfLongAndShortAnswers)
{
    check(answer("HistoryTrade", longOne));
    check(answer("TodayTrade"));

    ASSERT_TRUE(isChecked(2));
    EXPECT_THAT(commands, ElementsAre("HistoryTrade", "TodayTrade"));
}

TEST_F(AnswerCheckerTest, TellsTheSameAnswerFromAnotherOne)
{
    check(answer("HistoryTrade"));
    check(answer("HistoryTrade"));
    check(answer("HistoryTrade", 1));

    ASSERT_THAT(digests, SizeIs(3));
    EXPECT_EQ(digests[0], digests[1]);
    EXPECT_NE(digests[0], digests[2]);
}

TEST_F(AnswerCheckerTest, LeavesAloneWhatIsMoreThanItCanHold)
{
    constexpr int half = 40 * 1000 * 1000;
    const LogCapture log;
    check(answer("HistoryTrade", half));
    check(answer("TodayTrade", half));
    check(answer("EntrustTodayTrade", half));
    check(answer("HolderCostPrice"));

    ASSERT_TRUE(isChecked(2));
    EXPECT_THAT(commands, ElementsAre("HistoryTrade", "HolderCostPrice"));
    EXPECT_THAT(log.lines(QtWarningMsg), SizeIs(1));
}

TEST_F(AnswerCheckerTest, TellsNobodyOnceItHasGone)
{
    check(answer("TodayTrade", longOne));

    checker.reset();

    QCoreApplication::processEvents();
    EXPECT_THAT(commands, IsEmpty());
}

} // namespace Terminal
