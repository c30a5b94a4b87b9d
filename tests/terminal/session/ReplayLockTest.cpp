#include "terminal/session/ReplayLock.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace Terminal {
namespace {

class ReplayLockTest : public ::testing::Test
{
protected:
    ReplayLockTest() { qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8()); }
    ~ReplayLockTest() override { qputenv("XDG_RUNTIME_DIR", m_before); }

    const QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir m_runtime;
};

TEST_F(ReplayLockTest, IsHadByOneAtATimeAndTellsByWhom)
{
    ReplayLock first(QStringLiteral("/home/me/account.db"));
    ReplayLock second(QStringLiteral("/home/me/account.db"));
    ASSERT_TRUE(first.acquire());
    EXPECT_TRUE(first.acquire()) << "it has it already";
    ASSERT_FALSE(second.acquire());
    EXPECT_THAT(second.problem().toStdString(),
                ::testing::HasSubstr(std::to_string(QCoreApplication::applicationPid())));
    first.release();
    EXPECT_TRUE(second.acquire());
    EXPECT_EQ(second.problem(), QString());
}

TEST_F(ReplayLockTest, OfAnotherAccountIsAnother)
{
    ReplayLock first(QStringLiteral("/home/me/account.db"));
    ReplayLock second(QStringLiteral("/home/me/copy.db"));
    EXPECT_TRUE(first.acquire());
    EXPECT_TRUE(second.acquire());
}

TEST_F(ReplayLockTest, IsNotNeededWithoutAnAccount)
{
    ReplayLock first{QString()};
    ReplayLock second{QString()};
    EXPECT_TRUE(first.acquire());
    EXPECT_TRUE(second.acquire());
}

TEST_F(ReplayLockTest, SaysWhenItCannotBeHad)
{
    ReplayLock lock(QStringLiteral("/home/me/account.db"));
    ASSERT_TRUE(lock.acquire());
    const QDir folder(m_runtime.path());
    const QStringList files = folder.entryList(QDir::Files);
    ASSERT_EQ(files.size(), 1);
    lock.release();
    ASSERT_TRUE(folder.mkpath(files.front() + QStringLiteral("/in the way")));
    EXPECT_FALSE(lock.acquire());
    EXPECT_THAT(lock.problem().toStdString(), ::testing::HasSubstr(files.front().toStdString()));
}

} // namespace
} // namespace Terminal
