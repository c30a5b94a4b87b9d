#include "tradechartobject/common/SettlingWaits.h"

#include <QCoreApplication>
#include <QObject>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace TradeChart {

namespace {

constexpr std::chrono::milliseconds settlingTime{1000};
constexpr std::chrono::milliseconds longestTurn{100};
constexpr std::chrono::milliseconds idleTime{1};

/// A flood of notifications must not use up the stack.
constexpr int mostNestedWaits = 16;

/// Questions that are due together go out in portions, so that the user's input is handled between them.
constexpr std::chrono::milliseconds longestPortion{5};

void runEventsUntilOver(const SettlingSecond &second)
{
    while (!second.isOver()) {
        // A turn passes over the events that were due together with the one that is being handled.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(longestTurn.count()));
        // The turn ends as soon as nothing is left to do.
        QThread::msleep(static_cast<unsigned long>(idleTime.count()));
    }
}

} // namespace

SettlingSecond::SettlingSecond()
    : m_end(QTime::currentTime().addMSecs(static_cast<int>(settlingTime.count()))),
      m_latestEnd(settlingTime)
{
}

bool SettlingSecond::isOver() const
{
    return QTime::currentTime() >= m_end || m_latestEnd.hasExpired();
}

std::chrono::milliseconds SettlingSecond::remainingTime() const
{
    return std::chrono::milliseconds(m_latestEnd.remainingTime());
}

SettlingWaits::SettlingWaits(QObject &owner, std::function<void()> ask)
    : m_owner(owner),
      m_ask(std::move(ask))
{
}

void SettlingWaits::waitAndAsk()
{
    const SettlingSecond second;
    if (m_nestedWaits >= mostNestedWaits && !second.isOver()) {
        askByTimer(second);
        return;
    }
    const QPointer<QObject> owner(&m_owner);
    ++m_nestedWaits;
    runEventsUntilOver(second);
    if (owner) { // the host may have destroyed it meanwhile
        --m_nestedWaits;
        m_ask();
    }
}

void SettlingWaits::askByTimer(const SettlingSecond &second)
{
    m_onTimer.push_back(second);
    startTimer();
}

void SettlingWaits::startTimer()
{
    if (!std::exchange(m_isTimerRunning, true)) {
        QTimer::singleShot(m_onTimer.front().remainingTime(), &m_owner, [this] { askDue(); });
    }
}

void SettlingWaits::askDue()
{
    m_isTimerRunning = false;
    const QPointer<QObject> owner(&m_owner);
    const QDeadlineTimer endOfPortion(longestPortion);
    while (!m_onTimer.empty() && m_onTimer.front().isOver()) {
        m_onTimer.pop_front();
        m_ask();
        if (!owner) {
            return;
        }
        if (endOfPortion.hasExpired()) {
            break;
        }
    }
    if (!m_onTimer.empty()) {
        startTimer();
    }
}

} // namespace TradeChart
