#pragma once

#include <QDate>
#include <QHashFunctions>
#include <QString>

#include <optional>
#include <string>

namespace Trading {

/// A day of the calendar. There is no invalid one: what names no day makes none. Ledgers and messages hold
/// it as the number yyyymmdd, which fits into an int.
class TradingDate
{
public:
    /// Nothing where the calendar has no such day, and before the year 1 and after 9999.
    static constexpr std::optional<TradingDate> of(int year, int month, int day)
    {
        const bool exists = year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
                            day <= daysOfMonth(year, month);
        return exists ? std::optional(TradingDate(year * 10000 + month * 100 + day)) : std::nullopt;
    }
    /// The day of yyyymmdd.
    static constexpr std::optional<TradingDate> ofNumber(int yyyymmdd)
    {
        return of(yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100);
    }
    /// The day of eight digits, as messages have it.
    static std::optional<TradingDate> ofText(const QString &text);
    static std::optional<TradingDate> ofCalendar(const QDate &date);

    /// The day by this process's clock, also when the exchange is closed. See ExchangeTime.h.
    static TradingDate today();

    /// The first and the last day that there are.
    static constexpr TradingDate first() { return TradingDate(10101); }
    static constexpr TradingDate last() { return TradingDate(99991231); }

    constexpr int number() const { return m_number; } ///< yyyymmdd
    std::string digits() const;                       ///< "20240131", as messages have it
    QString text() const { return QString::fromStdString(digits()); }
    QString dashedText() const; ///< "2024-01-31", for people
    QDate calendarDate() const;

    /// So many days later, or earlier for a negative number. Stays within first() and last().
    TradingDate plusDays(int days) const;

    friend constexpr bool operator==(TradingDate a, TradingDate b) { return a.m_number == b.m_number; }
    friend constexpr bool operator!=(TradingDate a, TradingDate b) { return a.m_number != b.m_number; }
    friend constexpr bool operator<(TradingDate a, TradingDate b) { return a.m_number < b.m_number; }
    friend constexpr bool operator>(TradingDate a, TradingDate b) { return b < a; }
    friend constexpr bool operator<=(TradingDate a, TradingDate b) { return !(b < a); }
    friend constexpr bool operator>=(TradingDate a, TradingDate b) { return !(a < b); }
    friend uint qHash(TradingDate date, uint seed = 0) noexcept { return ::qHash(date.m_number, seed); }

private:
    explicit constexpr TradingDate(int number) : m_number(number) {}

    static constexpr int daysOfMonth(int year, int month)
    {
        constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        return days[month - 1] + (month == 2 && isLeapYear ? 1 : 0);
    }

    int m_number; ///< yyyymmdd
};

} // namespace Trading

Q_DECLARE_TYPEINFO(Trading::TradingDate, Q_MOVABLE_TYPE);
