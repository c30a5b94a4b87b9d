#pragma once

#include <QHashFunctions>
#include <QString>
#include <QTime>

#include <optional>
#include <string>

namespace Trading {

/// A time of day, to the hundredth of a second. There is no invalid one: what names no time makes none.
/// Ledgers and messages hold it as the number hhmmsscc, which fits into an int.
class ClockTime
{
public:
    constexpr ClockTime() = default; ///< midnight

    /// Nothing for what no clock shows.
    static constexpr std::optional<ClockTime> of(int hour, int minute, int second = 0, int hundredth = 0)
    {
        const bool exists =
            isBelow(24, hour) && isBelow(60, minute) && isBelow(60, second) && isBelow(100, hundredth);
        return exists ? std::optional(ClockTime(hour * 1000000 + minute * 10000 + second * 100 + hundredth))
                      : std::nullopt;
    }
    /// The time of hhmmsscc.
    static constexpr std::optional<ClockTime> ofNumber(int hhmmsscc)
    {
        return of(hhmmsscc / 1000000, hhmmsscc / 10000 % 100, hhmmsscc / 100 % 100, hhmmsscc % 100);
    }
    /// So many minutes after midnight, as bars have it.
    static constexpr std::optional<ClockTime> ofMinute(int minute) { return of(minute / 60, minute % 60); }
    /// The time of the digits hhmm, hhmmss or hhmmsscc, as messages have it. The first digit may be missing,
    /// as it is where a message has the time as a number.
    static std::optional<ClockTime> ofText(const QString &text);
    static std::optional<ClockTime> ofClock(const QTime &time);

    /// The time by this process's clock. See ExchangeTime.h.
    static ClockTime now();

    constexpr int number() const { return m_number; } ///< hhmmsscc
    /// Whole minutes since midnight.
    constexpr int minute() const { return m_number / 1000000 * 60 + m_number / 10000 % 100; }
    /// The end of the minute that is under way, in minutes since midnight: of 09:30:00 that of 09:30, and of
    /// any time after it within the minute that of 09:31.
    constexpr int endMinute() const { return minute() + (m_number % 10000 > 0 ? 1 : 0); }
    std::string digits() const; ///< "09301500", as messages have it
    QString text() const { return QString::fromStdString(digits()); }
    QString colonText() const; ///< "09:30:15", for people

    friend constexpr bool operator==(ClockTime a, ClockTime b) { return a.m_number == b.m_number; }
    friend constexpr bool operator!=(ClockTime a, ClockTime b) { return a.m_number != b.m_number; }
    friend constexpr bool operator<(ClockTime a, ClockTime b) { return a.m_number < b.m_number; }
    friend constexpr bool operator>(ClockTime a, ClockTime b) { return b < a; }
    friend constexpr bool operator<=(ClockTime a, ClockTime b) { return !(b < a); }
    friend constexpr bool operator>=(ClockTime a, ClockTime b) { return !(a < b); }
    friend uint qHash(ClockTime time, uint seed = 0) noexcept { return ::qHash(time.m_number, seed); }

private:
    explicit constexpr ClockTime(int number) : m_number(number) {}

    static constexpr bool isBelow(int end, int value) { return value >= 0 && value < end; }

    int m_number = 0; ///< hhmmsscc
};

} // namespace Trading

Q_DECLARE_TYPEINFO(Trading::ClockTime, Q_MOVABLE_TYPE);
