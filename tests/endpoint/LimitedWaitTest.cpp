#include "endpoint/LimitedWait_p.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QThread>

#include <future>
#include <memory>

namespace LocalCommunication {
namespace {

using namespace std::chrono_literals;

class LimitedWaitTest : public ::testing::Test
{
protected:
    LimitedWaitTest()
    {
        QObject::connect(wait.get(), &LimitedWait::tooLong, wait.get(), [this] { isTooLong = true; });
    }

    /// Work that lasts until `end` is told.
    LimitedWait::Work lasting()
    {
        return [this, ended = end.get_future().share()]() -> LimitedWait::Then {
            ended.wait();
            return [this] { isDone = true; };
        };
    }

    std::promise<void> end;
    std::unique_ptr<LimitedWait> wait = std::make_unique<LimitedWait>(nullptr, 20ms);
    bool isTooLong = false;
    bool isDone = false;
};

} // namespace

TEST_F(LimitedWaitTest, TellsInItsOwnThreadWhatCameOfTheWork)
{
    LimitedWait patient(nullptr, 20s);
    QThread *told = nullptr;
    QThread *worked = nullptr;
    patient.start([&]() -> LimitedWait::Then {
        worked = QThread::currentThread();
        return [&told] { told = QThread::currentThread(); };
    });

    ASSERT_TRUE(waitUntil([&told] { return told != nullptr; }));
    EXPECT_EQ(told, QThread::currentThread());
    EXPECT_NE(worked, told);
}

TEST_F(LimitedWaitTest, GivesUpAndHearsOfItNoMore)
{
    wait->start(lasting());
    ASSERT_TRUE(waitUntil([this] { return isTooLong; }));

    end.set_value();

    EXPECT_FALSE(waitUntil([this] { return isDone; }, 20ms));
}

TEST_F(LimitedWaitTest, IsWaitedForByNobodyWhenItEnds)
{
    wait->start(lasting());

    wait.reset();

    end.set_value();
    EXPECT_FALSE(waitUntil([this] { return isDone || isTooLong; }, 20ms));
}

} // namespace LocalCommunication
