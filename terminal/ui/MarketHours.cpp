#include "terminal/ui/MarketHours.h"

#include "trading/MarketRules.h"

#include <QStringList>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::seconds betweenLooks(5);
constexpr int inTheMinute = 30; ///< a second that is no end of a part

QString hoursAndMinutes(int minute)
{
    constexpr int characters = 5;
    return Trading::ClockTime::ofMinute(minute).value().colonText().left(characters);
}

} // namespace

MarketHours::MarketHours() : m_calendar(Trading::TradingCalendar::ofUser(&m_calendarFault))
{
    connect(&m_looks, &QTimer::timeout, this, &MarketHours::look);
    m_looks.start(betweenLooks);
    look();
}

QString MarketHours::text(const Trading::CalendarFault &fault)
{
    using Reason = Trading::CalendarFault::Reason;
    switch (fault.reason) {
    case Reason::Unreadable:
        return tr("Your holidays cannot be read, and none of them counts: %1: %2")
            .arg(fault.path, fault.text);
    case Reason::NoDays:
        return tr("Your holidays do not count until line %2 of %1 is put right: \"%3\" is no day, such as "
                  "2027-01-01, and no first and last day, such as 2027-02-08,2027-02-12.")
            .arg(fault.path, QString::number(fault.line), fault.text);
    case Reason::Backwards:
        return tr("Your holidays do not count until line %2 of %1 is put right: \"%3\" ends before it "
                  "begins.")
            .arg(fault.path, QString::number(fault.line), fault.text);
    case Reason::TooLong:
        return tr("Your holidays do not count until line %2 of %1 is put right: \"%3\" is longer than a "
                  "month.")
            .arg(fault.path, QString::number(fault.line), fault.text);
    }
    return {};
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
    const auto stateIn = [&](int minute, int second) {
        const auto time = Trading::ClockTime::of(minute / 60, minute % 60, second).value();
        return Trading::MarketRules::stateAt(day, time, calendar);
    };
    QStringList lines;
    for (int begin = 0; begin < minutesOfDay;) {
        const Trading::DayState part = stateIn(begin, inTheMinute);
        int end = begin + 1;
        while (end < minutesOfDay && stateIn(end, inTheMinute) == part) {
            ++end;
        }
        if (Trading::takesOrders(part)) {
            lines.append(
                QStringLiteral(u"%1–%2 %3").arg(hoursAndMinutes(begin), hoursAndMinutes(end), text(part)));
        }
        begin = end;
    }
    return lines.join(QLatin1Char('\n'));
}

QString MarketHours::hoursOn(Trading::TradingDate day) const
{
    return hoursOf(day, m_calendar);
}

} // namespace Terminal
