#include "terminal/aside/AsideWork.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QThread>

#include <memory>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AsideWorkTest : public ::testing::Test
{
protected:
    static constexpr qint64 little = 100;
    static constexpr qint64 much = 1000000;
    static constexpr qint64 tooMuch = 64 * 1024 * 1024;

    bool run(qint64 bytes, int number)
    {
        return aside->run(bytes, [this, number] {
            QThread *const worker = QThread::currentThread();
            return [this, number, worker] {
                done.push_back(number);
                isAside.push_back(worker != QThread::currentThread());
            };
        });
    }

    bool isDone(std::size_t count) const
    {
        return waitUntil([this, count] { return done.size() >= count; });
    }

    std::unique_ptr<AsideWork> aside = std::make_unique<AsideWork>();
    std::vector<int> done;
    std::vector<bool> isAside;
};

} // namespace

TEST_F(AsideWorkTest, DoesALittleAtOnce)
{
    run(little, 1);
    EXPECT_THAT(done, ElementsAre(1));
    EXPECT_THAT(isAside, ElementsAre(false));
}

TEST_F(AsideWorkTest, DoesMuchInAnotherThreadAndGoesOnInItsOwn)
{
    run(much, 1);
    EXPECT_THAT(done, IsEmpty());
    ASSERT_TRUE(isDone(1));
    EXPECT_THAT(isAside, ElementsAre(true));
}

TEST_F(AsideWorkTest, KeepsTheOrderOfMuchAndLittle)
{
    run(much, 1);
    run(little, 2);
    ASSERT_TRUE(isDone(2));
    EXPECT_THAT(done, ElementsAre(1, 2));
}

TEST_F(AsideWorkTest, RefusesWhatWouldWaitBehindTooMuch)
{
    EXPECT_TRUE(run(tooMuch, 1)) << "one alone may be as long as it is";
    EXPECT_FALSE(run(much, 2));
    ASSERT_TRUE(isDone(1));
    EXPECT_TRUE(run(much, 3));
    ASSERT_TRUE(isDone(2));
    EXPECT_THAT(done, ElementsAre(1, 3));
}

TEST_F(AsideWorkTest, TellsNothingWhenItHasGone)
{
    run(much, 1);
    aside.reset();
    EXPECT_FALSE(waitUntil([this] { return !done.empty(); }, std::chrono::milliseconds(20)));
}

} // namespace Terminal
