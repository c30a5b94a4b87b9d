#include "terminal/live/MarketWatch.h"

#include "trading/MarketRules.h"

#include <algorithm>
#include <utility>

namespace Terminal {

namespace {

/// How often the clock is looked at, at the most; a silence that is short is looked at more often.
constexpr std::chrono::milliseconds longestLook = std::chrono::seconds(5);

} // namespace

MarketWatch::MarketWatch(const Today *today, std::chrono::milliseconds silence)
    : m_today(today),
      m_silence(silence)
{
    connect(today, &Today::marketHeard, this, &MarketWatch::hear);
    connect(&m_looks, &QTimer::timeout, this, &MarketWatch::look);
}

void MarketWatch::hear(const Trading::Quote &quote)
{
    if (m_day != quote.date) {
        m_day = quote.date;
        m_lastTime.reset();
    }
    const std::optional<Trading::ClockTime> before = m_lastTime;
    m_lastTime = std::max(m_lastTime.value_or(quote.time), quote.time);
    m_sinceHeard.start();
    if (!m_looks.isActive()) {
        m_looks.start(std::min(m_silence, longestLook));
    }
    const State stateBefore = std::exchange(m_state, found());
    if (m_state != stateBefore || !before || before->minute() != m_lastTime->minute()) {
        Q_EMIT changed();
    }
}

void MarketWatch::look()
{
    const State before = std::exchange(m_state, found());
    if (m_state != before) {
        Q_EMIT changed();
    }
}

MarketWatch::State MarketWatch::found() const
{
    if (m_day != m_today->date()) {
        return State::Unheard;
    }
    const std::chrono::milliseconds silence(m_sinceHeard.elapsed());
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(silence);
    const auto now = Trading::ClockTime::ofMinute(m_lastTime->minute() + static_cast<int>(minutes.count()));
    if (!now) {
        return State::Closed;
    }
    using Trading::DayState;
    switch (Trading::MarketRules::stateOnTradingDay(*m_day, *now)) {
    case DayState::BeforeOpen:
        return State::NotOpen;
    case DayState::OpeningAuction:
    case DayState::BeforeMorning:
    case DayState::Morning:
    case DayState::Afternoon:
    case DayState::ClosingAuction:
        return silence > m_silence ? State::Silent : State::Quoted;
    case DayState::NoonBreak:
        return State::Break;
    case DayState::AfterClose:
    case DayState::AfterHours:
    case DayState::Closed:
        return State::Closed;
    }
    return State::Unheard;
}

} // namespace Terminal
