#pragma once

#include "trading/TradingDate.h"

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace Trading {

/// Why a calendar file is not read.
struct CalendarFault
{
    enum class Reason {
        Unreadable, ///< the file cannot be opened; there is no line
        NoDays,     ///< a line that does not begin with a day, or with two
        Backwards,  ///< the last day of a holiday is before its first
        TooLong,    ///< a holiday of more than a month
    };
    QString path;
    int line = 0;
    Reason reason = Reason::Unreadable;
    QString text; ///< the line
};

/// On which days the exchanges are open: Monday to Friday, but not on the holidays of calendar files. Such a
/// file has a line for each holiday, `first day,last day,name` or `day,name`, with days as 2026-10-01 or
/// 20261001; what follows a # is a remark. A year of which no file tells has weekends alone.
class TradingCalendar
{
public:
    /// Knows weekends alone.
    TradingCalendar() = default;

    /// With the holidays that are shipped with the programs, which end with the last year that the exchanges
    /// had published then.
    static TradingCalendar shipped();

    /// Adds the holidays of a text; nothing is added when a line is wrong.
    std::optional<CalendarFault> add(const QByteArray &text, const QString &path);
    /// Adds the holidays of a file.
    std::optional<CalendarFault> addFile(const QString &path);

    /// The file of the user's own holidays: what TRADING_HOLIDAYS names, else trading/holidays.csv in the
    /// user's configuration. It need not be there.
    static QString usersFile();
    /// What is shipped and what the user's file adds; `fault`, unless null, tells what is wrong with that
    /// file, which counts for nothing then.
    static TradingCalendar ofUser(std::optional<CalendarFault> *fault = nullptr);

    bool isTradingDay(TradingDate day) const;
    /// True when a file tells of the year's holidays; else weekends alone are known.
    bool knowsYear(int year) const { return m_years.contains(year); }

private:
    QSet<TradingDate> m_holidays;
    QSet<int> m_years;
};

} // namespace Trading
