// The second after a notification, as the event loop sees it that is run meanwhile.
#include "tests/support/OverlayTest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

using ::testing::SizeIs;
using namespace TradeChart;

namespace {

/// How an event loop was run.
struct Turns
{
    QEventLoop::ProcessEventsFlags flags = QEventLoop::AllEvents; ///< of all turns together
    std::vector<qint64> milliseconds;                             ///< that each turn has taken
};

/// An event loop that has always something to do and knows no end of it. A new turn begins once the posted
/// events are handled, which it does not do itself.
class BusyLoop final : public QAbstractEventDispatcher
{
public:
    explicit BusyLoop(Turns &turns) : m_turns(turns) {}

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override
    {
        if (m_turnIsOver) {
            m_turnIsOver = false;
            m_turns.milliseconds.push_back(0);
            m_clock.start();
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }
        QThread::msleep(1);
        m_turns.flags |= flags;
        m_turns.milliseconds.back() = m_clock.elapsed();
        return true;
    }

    bool event(QEvent *event) override
    {
        m_turnIsOver = m_turnIsOver || event->type() == QEvent::User;
        return QAbstractEventDispatcher::event(event);
    }

    bool hasPendingEvents() override { return true; }
    void registerSocketNotifier(QSocketNotifier *) override {}
    void unregisterSocketNotifier(QSocketNotifier *) override {}
    void registerTimer(int, int, Qt::TimerType, QObject *) override {}
    bool unregisterTimer(int) override { return true; }
    bool unregisterTimers(QObject *) override { return true; }
    QList<TimerInfo> registeredTimers(QObject *) const override { return {}; }
    int remainingTime(int) override { return -1; }
    void wakeUp() override {}
    void interrupt() override {}
    void flush() override {}

private:
    Turns &m_turns;
    bool m_turnIsOver = true;
    QElapsedTimer m_clock;
};

class EntrustPointWaitTurns : public OverlayTest<EntrustPoint>
{
protected:
    void SetUp() override
    {
        axis.mode = Korvane::TodayChart;
        const std::unique_ptr<QThread> thread(QThread::create([this] {
            create();
            calc(shanghai, {makeMinuteBar(20240102, 931)}, Korvane::IntradayPeriod);
            bus().sent.clear();
            hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})");
            destroy();
        }));
        thread->setEventDispatcher(new BusyLoop(turns)); // the thread's from now on
        thread->start();
        thread->wait();
        ASSERT_THAT(questions(), SizeIs(1));
        ASSERT_FALSE(turns.milliseconds.empty());
    }

    Turns turns;
};

TEST_F(EntrustPointWaitTurns, HoldNoKindOfEventBack)
{
    EXPECT_EQ(turns.flags, QEventLoop::AllEvents);
}

/// On a crowded machine some turns are longer, and some cut: not all of them.
TEST_F(EntrustPointWaitTurns, EndAfterATenthOfASecondAlsoWhenThereIsAlwaysSomethingToDo)
{
    const auto [shortest, longest] =
        std::minmax_element(turns.milliseconds.begin(), turns.milliseconds.end());
    EXPECT_LT(*shortest, 200);
    EXPECT_GE(*longest, 95);
}

} // namespace
