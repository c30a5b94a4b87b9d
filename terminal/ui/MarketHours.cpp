#include "terminal/ui/MarketHours.h"

#include "trading/MarketRules.h"

#include <QStringList>

#include <chrono>
#include <utility>

namespace Terminal {

namespace {

constexpr std::chrono::seconds betweenLooks(5);

QString hoursAndMinutes(int minute)
{
    constexpr int characters = 5;
    return Trading::ClockTime::ofMinute(minute).value().colonText().left(characters);
}

} // namespace

MarketHours::MarketHours(Trading::TradingCalendar calendar) : m_calendar(std::move(calendar))
{
    connect(&m_looks, &QTimer::timeout, this, &MarketHours::look);
    m_looks.start(betweenLooks);
    look();
}

void MarketHours::look()
{
    const auto state =
        Trading::MarketRules::stateAt(Trading::TradingDate::today(), Trading::ClockTime::now(), m_calendar);
    if (state != m_state) {
        m_state = state;
        Q_EMIT changed();
    }
}

bool MarketHours::knowsHolidays() const
{
    return m_calendar.knowsYear(Trading::TradingDate::today().calendarDate().year());
}

QString MarketHours::text(Trading::DayState state)
{
    using State = Trading::DayState;
    switch (state) {
    case State::Closed:
        return tr("Market closed");
    case State::BeforeOpen:
        return tr("Before the open");
    case State::OpeningAuction:
        return tr("Opening auction");
    case State::BeforeMorning:
        return tr("Before the morning session");
    case State::Morning:
        return tr("Morning session");
    case State::NoonBreak:
        return tr("Noon break");
    case State::Afternoon:
        return tr("Afternoon session");
    case State::ClosingAuction:
        return tr("Closing auction");
    case State::AfterClose:
        return tr("After the close");
    case State::AfterHours:
        return tr("Trading at the closing price");
    }
    return {};
}

/// Read off the rules minute by minute, so that hours are written in one place.
QString MarketHours::hoursOf(Trading::TradingDate day, const Trading::TradingCalendar &calendar)
{
    constexpr int minutesOfDay = 24 * 60;
    QStringList lines;
    Trading::DayState part = Trading::DayState::Closed;
    int begin = 0;
    for (int minute = 0; minute < minutesOfDay; ++minute) {
        const auto time = Trading::ClockTime::ofMinute(minute).value();
        const auto now = Trading::MarketRules::stateAt(day, time, calendar);
        if (now == part && minute + 1 < minutesOfDay) {
            continue;
        }
        if (Trading::takesOrders(part)) {
            const int end = Trading::takesOrders(now) ? minute : minute - 1; // trading has both its ends
            lines.append(
                QStringLiteral(u"%1–%2 %3").arg(hoursAndMinutes(begin), hoursAndMinutes(end), text(part)));
        }
        part = now;
        begin = minute;
    }
    return lines.join(QLatin1Char('\n'));
}

QString MarketHours::hoursOfToday() const
{
    return hoursOf(Trading::TradingDate::today(), m_calendar);
}

} // namespace Terminal
