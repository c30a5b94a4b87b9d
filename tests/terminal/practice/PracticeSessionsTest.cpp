// The list of practices: begun, begun again, deleted, and never half of one.
#include "terminal/practice/PracticeSessions.h"

#include "terminal/practice/PracticeLock.h"
#include "terminal/practice/PractisedLedger.h"
#include "tests/terminal/practice/SomePractice.h"

#include <QDir>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class PracticeSessionsTest : public SomePractice
{
protected:
    void SetUp() override { importStatement(); }

    static void write(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Append));
        file.write(text);
    }
};

TEST_F(PracticeSessionsTest, KeepAPracticeUnderItsName)
{
    EXPECT_THAT(sessions().all(), IsEmpty());
    ASSERT_TRUE(begin(wish("早盘 /.."))) << m_problem;
    const auto found = sessions().find(QStringLiteral(u"早盘 /.."));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->code, QStringLiteral("600536"));
    EXPECT_EQ(found->day, onDay(20230711));
    EXPECT_EQ(found->dataFolder, QStringLiteral(TRADECHART_EXAMPLES));
    EXPECT_THAT(sessions().all(), SizeIs(1));
    EXPECT_EQ(sessions().freeName(found->name), found->name + QStringLiteral(" (2)"));
}

TEST_F(PracticeSessionsTest, LeaveTheCopiedAccountByteForByte)
{
    const QByteArray before = contentsOf(ledger());
    ASSERT_TRUE(begin(wish())) << m_problem;
    EXPECT_EQ(contentsOf(ledger()), before);
}

TEST_F(PracticeSessionsTest, RefuseANameThatIsTaken)
{
    const auto first = begin(wish());
    ASSERT_TRUE(first);
    EXPECT_FALSE(begin(wish()));
    EXPECT_THAT(m_problem, HasSubstr("another name"));
    EXPECT_THAT(sessions().all(), SizeIs(1));
}

TEST_F(PracticeSessionsTest, ListNoneThatCouldNotBeBegun)
{
    PracticeWish nothing = wish();
    nothing.copiedLedger = m_folder.filePath(QStringLiteral("nothing.db"));
    EXPECT_FALSE(begin(nothing));
    EXPECT_THAT(m_problem, HasSubstr("nothing.db"));
    EXPECT_FALSE(begin(wish(), QStringLiteral("/nowhere/trademodule")));
    EXPECT_THAT(m_problem, HasSubstr("/nowhere/trademodule"));
    EXPECT_THAT(sessions().all(), IsEmpty());
    const QString folder = m_folder.filePath(QStringLiteral("share/tradechart/tradeterminal/practice"));
    EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), IsEmpty());
}

/// A program that was killed leaves what it had done until then.
TEST_F(PracticeSessionsTest, ListNoneOfWhichAPartIsMissing)
{
    const auto session = begin(wish());
    ASSERT_TRUE(session);
    const QString room = sessions().makeRoom();
    QFile::copy(session->ledger(), room + QStringLiteral("/account.db"));
    EXPECT_THAT(sessions().all(), SizeIs(1));
    QFile::remove(session->begunLedger());
    EXPECT_THAT(sessions().all(), IsEmpty());
    EXPECT_TRUE(begin(wish())) << "the name is free: " << m_problem;
}

TEST_F(PracticeSessionsTest, PutTheAccountBackWhenOneBeginsAgain)
{
    const auto session = begin(wish());
    ASSERT_TRUE(session);
    write(session->ledger() + QStringLiteral("-wal"), "of trades");
    write(session->ledger(), "traded");
    EXPECT_EQ(sessions().restart(*session), QString());
    EXPECT_EQ(contentsOf(session->ledger()), contentsOf(session->begunLedger()));
    EXPECT_FALSE(QFile::exists(session->ledger() + QStringLiteral("-wal")));
    const auto ledger =
        readPractisedLedger(session->ledger(), QStringLiteral(TRADEMODULE), QStringLiteral("en"));
    ASSERT_TRUE(ledger) << qPrintable(ledger.error());
    EXPECT_EQ(ledger.value().day, onDay(20230711));
    EXPECT_EQ(ledger.value().reached, std::nullopt);
}

TEST_F(PracticeSessionsTest, DeleteOneThatNoWindowHasOpen)
{
    const auto session = begin(wish());
    ASSERT_TRUE(session);
    {
        PracticeLock window(*session);
        ASSERT_TRUE(window.acquire());
        PracticeLock second(*session);
        EXPECT_FALSE(second.acquire());
        EXPECT_THAT(second.problem().toStdString(), HasSubstr("another window"));
        EXPECT_THAT(sessions().remove(*session).toStdString(), HasSubstr("another window"));
        EXPECT_THAT(sessions().all(), SizeIs(1));
    }
    EXPECT_EQ(sessions().remove(*session), QString());
    EXPECT_THAT(sessions().all(), IsEmpty());
    EXPECT_FALSE(QFile::exists(session->folder));
}

TEST_F(PracticeSessionsTest, SayWhyTheLedgerOfOneCannotBeRead)
{
    const auto session = begin(wish());
    ASSERT_TRUE(session);
    QFile::remove(session->ledger());
    write(session->ledger(), "this is no ledger, but long enough to look like a file of something");
    const auto read =
        readPractisedLedger(session->ledger(), QStringLiteral(TRADEMODULE), QStringLiteral("en"));
    EXPECT_FALSE(read);
    EXPECT_THAT(read.error().toStdString(), HasSubstr("not a database"));
}

} // namespace
} // namespace Terminal
