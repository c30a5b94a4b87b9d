// Work that is asked for again and again.
#include "terminal/live/Pacer.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class PacerTest : public ::testing::Test
{
protected:
    PacerTest()
    {
        QObject::connect(&m_pacer, &Pacer::due, &m_pacer, [this] { ++m_done; });
    }

    Pacer m_pacer{std::chrono::hours(1)};
    int m_done = 0;
};

TEST_F(PacerTest, HasWorkDoneOnceHoweverOftenItIsAskedFor)
{
    m_pacer.ask();
    m_pacer.ask();
    EXPECT_EQ(m_done, 0) << "from the event loop";
    ASSERT_TRUE(waitUntil([this] { return m_done > 0; }));
    m_pacer.ask();
    EXPECT_FALSE(waitUntil([this] { return m_done > 1; }, std::chrono::milliseconds(20)))
        << "not within its interval";
}

TEST_F(PacerTest, IsDueAgainAfterItsInterval)
{
    Pacer pacer(std::chrono::milliseconds(5));
    QObject::connect(&pacer, &Pacer::due, &pacer, [this] { ++m_done; });
    pacer.ask();
    ASSERT_TRUE(waitUntil([this] { return m_done == 1; }));
    pacer.ask();
    EXPECT_TRUE(waitUntil([this] { return m_done == 2; }));
}

TEST_F(PacerTest, LetsGoOfWhatWasDoneMeanwhile)
{
    m_pacer.ask();
    m_pacer.cancel();
    EXPECT_FALSE(waitUntil([this] { return m_done > 0; }, std::chrono::milliseconds(10)));
}

} // namespace
} // namespace Terminal
