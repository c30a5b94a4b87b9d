#pragma once

#include "trading/ClockTime.h"
#include "trading/DayState.h"
#include "trading/TradingCalendar.h"
#include "trading/TradingDate.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

namespace Terminal {

/// Where the exchange's day is now, by the clock of this machine and the calendar of trading days. Whether
/// quotes come is another question, see MarketWatch.
class MarketHours : public QObject
{
    Q_OBJECT

public:
    /// By the calendar of the user.
    MarketHours();

    /// What is wrong with the user's own file of holidays, none of which counts then.
    const std::optional<Trading::CalendarFault> &calendarFault() const { return m_calendarFault; }
    /// File, line and what to do, for the user.
    static QString text(const Trading::CalendarFault &fault);

    Trading::DayState state() const { return m_state; }
    /// False where no holidays of this year are known: then the state goes by weekdays alone.
    bool knowsHolidays() const;

    /// The state in a few words for the user.
    static QString text(Trading::DayState state);
    /// The parts of `day` with their times, a line for each; none when it is no trading day.
    static QString hoursOf(Trading::TradingDate day, const Trading::TradingCalendar &calendar);
    /// By the calendar of the user.
    QString hoursOn(Trading::TradingDate day) const;

Q_SIGNALS:
    void changed();

private:
    void look();

    std::optional<Trading::CalendarFault> m_calendarFault;
    const Trading::TradingCalendar m_calendar;
    QTimer m_looks;
    Trading::DayState m_state = Trading::DayState::Closed;
};

} // namespace Terminal
