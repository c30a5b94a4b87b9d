#include "terminal/replay/Replay.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds minuteOfTheDay = std::chrono::minutes(1);

} // namespace

Replay::Replay(QObject *parent) : QObject(parent)
{
    m_minute.setTimerType(Qt::PreciseTimer);
    setSpeed(m_speed);
    connect(&m_minute, &QTimer::timeout, this, &Replay::step);
}

bool Replay::open(const ChartData &day, Trading::TradingDate today)
{
    if (day.period != ChartPeriod::Minute || day.bars.empty()) {
        return false; // a bar of a day is no minute of any
    }
    m_day = day;
    m_recordedDate = dayOf(day.bars.front());
    dateBars(today);
    setState(State::Paused);
    restart();
    return true;
}

void Replay::dateBars(Trading::TradingDate today)
{
    for (Bar &bar : m_day.bars) {
        bar.date = today.number();
    }
}

void Replay::moveTo(Trading::TradingDate today)
{
    if (m_state == State::Closed) {
        return;
    }
    dateBars(today);
    const size_t completed = std::exchange(m_completed, 0);
    Q_EMIT restarted();
    complete(completed);
}

void Replay::close()
{
    m_day = {};
    m_completed = 0;
    setState(State::Closed);
}

void Replay::restart()
{
    if (m_state == State::Closed) {
        return;
    }
    m_completed = 0;
    Q_EMIT restarted();
    if (m_state == State::Ended) {
        setState(State::Paused);
    } else if (m_state == State::Playing) {
        m_minute.start();
    }
    complete(1);
}

void Replay::play()
{
    if (m_state == State::Paused) {
        setState(State::Playing);
    }
}

void Replay::pause()
{
    if (m_state == State::Playing) {
        setState(State::Paused);
    }
}

void Replay::step()
{
    complete(m_completed + 1);
}

void Replay::playTo(Trading::ClockTime time)
{
    const auto end = std::upper_bound(m_day.bars.begin(), m_day.bars.end(), time.minute(),
                                      [](int minute, const Bar &bar) { return minute < bar.minute; });
    complete(static_cast<size_t>(end - m_day.bars.begin()));
}

void Replay::setSpeed(int speed)
{
    m_speed = std::clamp(speed, slowest, fastest);
    m_minute.setInterval(minuteOfTheDay / m_speed);
    Q_EMIT speedChanged();
}

/// Listeners may close the day or begin it again while they hear of a bar: then nothing more follows.
void Replay::complete(size_t count)
{
    if (count <= m_completed || !hasMore()) {
        return;
    }
    while (m_completed < count && hasMore()) {
        const size_t number = m_completed++;
        const Bar bar = m_day.bars[number];
        Q_EMIT barCompleted(bar);
        if (m_completed != number + 1) {
            return;
        }
    }
    Q_EMIT advanced();
    if (!hasMore() && m_state != State::Closed) {
        setState(State::Ended);
    }
}

void Replay::setState(State state)
{
    if (state == m_state) {
        return;
    }
    m_state = state;
    if (state == State::Playing) {
        m_minute.start();
    } else {
        m_minute.stop();
    }
    Q_EMIT stateChanged();
}

} // namespace Terminal
