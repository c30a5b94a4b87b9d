// A notification comes before the trading module's own books are settled: it is asked a second later.
#pragma once

#include <QDeadlineTimer>
#include <QTime>

#include <chrono>
#include <deque>
#include <functional>

class QObject;

namespace TradeChart {

/// The second that a trading module gets. It ends by the time of day, as users see it; just before midnight
/// its end lies in the past and there is nothing to wait for. A clock that is set back does not make it
/// longer.
class SettlingSecond
{
public:
    SettlingSecond();

    bool isOver() const;
    std::chrono::milliseconds remainingTime() const;

private:
    QTime m_end;
    QDeadlineTimer m_latestEnd;
};

/// Asks once for every notification, a second after it.
class SettlingWaits
{
public:
    /// `ask` is called for as long as `owner` lives; it may destroy both. Requires an event loop.
    SettlingWaits(QObject &owner, std::function<void()> ask);

    /// Called for a notification: runs the event loop until its second is over, asks, and returns. Both this
    /// object and its owner can be gone then. Notifications that come meanwhile wait inside this wait; those
    /// that would make the stack too deep are asked about by a timer instead, and for them it returns at
    /// once.
    void waitAndAsk();

private:
    void askByTimer(const SettlingSecond &second);
    void startTimer();
    void askDue();

    QObject &m_owner;
    std::function<void()> m_ask;
    int m_nestedWaits = 0;
    std::deque<SettlingSecond> m_onTimer; ///< in the order in which they end
    bool m_isTimerRunning = false;
};

} // namespace TradeChart
